#!/usr/bin/env python3
"""Keeps docs/manual current: what its pages take from the program, and the pictures.

  manual.py                    writes the marked parts of the pages anew
  manual.py --check            refuses what is stale, links to nothing, lacks a picture or names what is not there
  manual.py [--check] COMMAND  with a command that starts the demo host: takes the pictures that the pages use, or with
                               --check compares what the dialogs show now with what they showed then

A page is HTML by hand but for its marked parts, `<!--[name rest]-->` to `<!--[/name]-->`:
  cabeza          the head, the way back and the title            pie     the way on and the end
  ficha           form and operations, from contract/             teclas  its keys, from docs/keys.md
  indice          the pages by section                            herramientas  its tools, from there too
  menus           what the demo host's menus open                 ventanas      pages by what stands over the window
  figura A | B    the picture of the tour's stop A, B what it shows to who cannot see it
By hand, but looked up: <b> is a caption of the program's, <q> a message (… for what varies), <kbd> a key, <code> anything
that stands in the sources, <code class="oye"> a call to the sink. <samp> and <i> are free.
"""
import html
import html.parser
import pathlib
import re
import subprocess
import sys
import tempfile

from manual_pictures import described, size_of, smaller
from manual_program import keys, literals, menus, operations, plain, read, root, sink_members, sources
from manual_words import COMMANDS, FIXED_KEYS, LOOKUPS, PAGES, PLACES

manual = root / "docs/manual"
pictures = manual / "imagenes"
record = root / "tools/manual_shown.txt"  # what the pictures show, in words
ROWS = "5000"  # articles in the demo host's tables: fewer are made sooner
faults = []


def fault(where, what):
    faults.append(f"{where}: {what}")


# The marked parts


def key_rows(form, rows):
    """The table of a form: keys with the same effect stand together, those that a key before has are left out."""
    taken, lines = set(), {}
    for key, where, command in rows:
        if key == "clic" or (key, where) in taken:
            continue
        taken.add((key, where))
        if command == "(nothing)" or (where == "where it is offered" and form not in LOOKUPS):
            continue
        text = COMMANDS.get((form, command), COMMANDS.get(command, ""))
        place = PLACES.get((form, where), PLACES.get(where, ""))
        if text == "" or place == "":
            fault(f"manual_words.py: {form}", f"no words for {command if text == '' else where}")
        elif text is not None:
            known = lines.setdefault((place, text), [])
            known += [] if key in known else [key]
    for (place, text), named in lines.items():  # what a key does everywhere it does there too
        if place != PLACES["everywhere"]:
            named[:] = [key for key in named if key not in lines.get((PLACES["everywhere"], text), [])]
    return [f"<tr><td>{', '.join(f'<kbd>{html.escape(k)}</kbd>' for k in named)}</td><td>{place}</td><td>{text}</td></tr>"
            for (place, text), named in lines.items() if named]


def part_teclas(page, _):
    form = page.form
    own = ALL_KEYS[form][1] if form else []
    shown = key_rows(form, own + ALL_KEYS[None][1])
    return ("<table class=\"teclas\">\n<thead><tr><th>Tecla</th><th>Dónde</th><th>Qué hace</th></tr></thead>\n<tbody>\n"
            + "\n".join(shown) + "\n</tbody>\n</table>")


def part_herramientas(page, _):
    return "<p>" + " · ".join(f"<b>{html.escape(t)}</b>" for t in ALL_KEYS[page.form][0]) + "</p>"


def window_title(page):
    """What stands over the dialog in its first picture, as far as it stands in the program: the rest is the table's, or a date."""
    stop = re.search(r"<!--\[figura ([\w-]+) ", page.text)
    title = re.search(r"«(.*)»", shown().get(stop[1], "«»") if stop else "«»")[1]
    words = title.split()
    while words and plain(" ".join(words)) not in CAPTIONS:
        words.pop()
    known = " ".join(words).rstrip(" :")
    return known if plain(known) == plain(title) else known + " …"


def part_ficha(page, _):
    named = ", ".join(f"<code>{name}</code>" for name in OPENED[page.form])
    word = "operación" if len(OPENED[page.form]) == 1 else "operaciones"
    return f"<p class=\"ficha\">Ventana «{html.escape(window_title(page))}», formulario <code>{page.form}</code>, {word} {named}.</p>"


def part_figura(page, rest):
    name, alt = (text.strip() for text in rest.split("|", 1))
    width, height = size_of(pictures / f"{name}.png") if (pictures / f"{name}.png").exists() else (0, 0)
    return (f'<p class="figura"><img src="imagenes/{name}.png" width="{width}" height="{height}" '
            f'alt="{html.escape(alt)}"></p>')


def part_cabeza(page, _):
    way = "" if page.name == "index.html" else '<p class="camino"><a href="index.html">Manual de Tamvelo</a></p>\n'
    title = page.title if page.name == "index.html" else f"{page.title} · Manual de Tamvelo"
    return f"""<html lang="es">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>{title}</title>
<link rel="stylesheet" href="estilo.css">
</head>
<body>
{way}<h1>{page.title}</h1>"""


def part_pie(page, _):
    order = [name for _, pages in PAGES for name, *_ in pages]
    at = order.index(page.name) if page.name in order else -1
    links = []
    if at > 0:
        links.append(f'<a href="{order[at - 1]}">Anterior: {TITLES[order[at - 1]]}</a>')
    if at + 1 < len(order):
        links.append(f'<a href="{order[at + 1]}">Siguiente: {TITLES[order[at + 1]]}</a>')
    return '<p class="pie">' + " · ".join(links) + "</p>\n</body>\n</html>"


def part_menus(_page, _):
    forms = {name: form for form, names in OPENED.items() for name in names}
    rows = [f'<tr><td><b>{menu}</b></td><td><b>{line}</b></td><td><a href="{forms[name]}.html">{TITLES[forms[name] + ".html"]}</a></td></tr>'
            for name, (menu, line) in menus().items()]
    return ("<table>\n<thead><tr><th>Menú</th><th>Línea</th><th>Diálogo</th></tr></thead>\n<tbody>\n" + "\n".join(rows)
            + "\n</tbody>\n</table>")


def part_indice(_page, _):
    text = []
    for section, pages in PAGES:
        text.append(f"<h2>{section}</h2>\n<ul>")
        text += [f'<li><a href="{name}">{title}</a>: {line}</li>' for name, title, line in pages]
        text.append("</ul>")
    return "\n".join(text)


def part_ventanas(_page, _):
    pages = {}
    for page in ALL:
        if page.form:
            pages.setdefault(window_title(page), []).append(f'<a href="{page.name}">{page.title}</a>')
    rows = [f"<tr><td>{html.escape(title)}</td><td>{', '.join(links)}</td></tr>" for title, links in sorted(pages.items())]
    return "<table>\n<thead><tr><th>Título</th><th>Página</th></tr></thead>\n<tbody>\n" + "\n".join(rows) + "\n</tbody>\n</table>"


PARTS = {name[5:]: value for name, value in list(globals().items()) if name.startswith("part_")}


class Page:
    def __init__(self, path):
        self.path, self.name = path, path.name
        self.form = path.stem if path.stem.startswith("frm") else None
        self.title = TITLES.get(self.name, "")
        self.text = path.read_text(encoding="utf-8")
        if not self.title:
            fault(self.name, "stands in no section of manual_words.py")

    def current(self):
        def write(match):
            name, rest = match[1], match[2].strip()
            if name not in PARTS:
                fault(self.name, f"no part is called {name}")
                return match[0]
            mark = f"{name} {rest}" if rest else name
            return f"<!--[{mark}]-->\n{PARTS[name](self, rest)}\n<!--[/{name}]-->"

        return re.sub(r"<!--\[(\w+)([^\]]*)\]-->.*?<!--\[/\1\]-->", write, self.text, flags=re.S)


# What is refused


class Reader(html.parser.HTMLParser):
    """Links, anchors, pictures and looked-up texts of a page; its tags in order."""
    VOID = {"meta", "link", "img", "br", "hr"}

    def __init__(self, page):
        super().__init__()
        self.page, self.open, self.anchors, self.links, self.said = page, [], set(), [], []
        self.feed(page.text)
        if self.open:
            fault(page.name, f"<{self.open[-1][0]}> is not closed")

    def handle_starttag(self, tag, attributes):
        given = dict(attributes)
        if tag in ("script", "iframe", "style") or any(name.startswith("on") for name in given):
            fault(self.page.name, f"<{tag}>: pages are plain")
        if tag == "img" and not given.get("alt"):
            fault(self.page.name, f"{given.get('src')} has no alternative text")
        if "id" in given:
            self.anchors.add(given["id"])
        self.links += [given[name] for name in ("href", "src") if name in given]
        if tag not in self.VOID:
            self.open.append([tag, given.get("class"), ""])
            self.said.append(self.open[-1])

    def handle_endtag(self, tag):
        if not self.open or self.open.pop()[0] != tag:
            fault(self.page.name, f"</{tag}> at line {self.getpos()[0]} closes something else")
            self.open = []

    def handle_data(self, data):
        if self.open:
            self.open[-1][2] += data


def check_texts(page, reader):
    for tag, kind, text in reader.said:
        text = " ".join(text.split())
        if tag == "b" and plain(text) not in CAPTIONS:
            fault(page.name, f"the program shows no «{text}»")
        elif tag == "q":
            for piece in text.split("…"):
                if plain(piece) and not any(plain(piece) in known for known in CAPTIONS):
                    fault(page.name, f"the program does not say «{piece.strip()}»")
        elif tag == "kbd" and text not in KEY_NAMES and not is_access_key(text):
            fault(page.name, f"no dialog has the key {text}")
        elif tag == "code" and kind == "oye":
            check_call(page, text)
        elif tag == "code" and text not in EVERYTHING:
            fault(page.name, f"the sources know no {text}")


def is_access_key(key):
    letter = re.fullmatch(r"Alt\+(\w)", key)
    return letter is not None and f"&{letter[1]}".lower() in ACCESS


def check_call(page, text):
    call = re.fullmatch(r"(\w+)\((.*)\)", text)
    least, most = SINK.get(call[1], (0, -1)) if call else (0, -1)
    count = len([a for a in call[2].split(",") if a.strip()]) if call else 0
    if not least <= count <= most:
        fault(page.name, f"no sink hears {text}")


def check_links(pages, readers):
    for page, reader in zip(pages, readers):
        for link in reader.links:
            name, _, anchor = link.partition("#")
            if re.match(r"\w+:|//", link):
                fault(page.name, f"{link} is not in the manual")
            elif name and not (manual / name).is_file():
                fault(page.name, f"{link} leads nowhere")
            elif anchor and anchor not in next((r.anchors for p, r in zip(pages, readers) if p.name == (name or page.name)), ()):
                fault(page.name, f"{link} leads to no place")


def shown():
    """Stop of the tour to what its picture shows."""
    kept = record.read_text(encoding="utf-8") if record.exists() else ""
    return dict(re.findall(r"^== (\S+)\n(.*?)(?=^== |\Z)", kept, re.M | re.S))


def stops():
    """The pictures that pages show, by their stop of the tour."""
    return list(dict.fromkeys(re.findall(r"<!--\[figura ([\w-]+) ", "".join(page.text for page in ALL))))


def check(readers):
    for page in ALL:
        if not page.text.startswith("<!DOCTYPE html>\n"):
            fault(page.name, "does not begin with its document type, and older browsers would guess")
        if page.text != page.current():
            fault(page.name, "is stale: run tools/manual.py")
    for form in OPENED:
        text = next((page.text for page in ALL if page.form == form), None)
        if text is None:
            fault(form, "has no page")
        else:
            for member in HEARD[form]:
                if f'"oye">{member}(' not in text:
                    fault(f"{form}.html", f"does not tell of {member}")
            for part in ("cabeza", "ficha", "figura", "teclas", "herramientas", "pie"):
                if f"<!--[{part}" not in text:
                    fault(f"{form}.html", f"lacks its part {part}")
    for name in TITLES:
        if not (manual / name).is_file():
            fault(name, "is missing")
    kept = {path.name for path in pictures.iterdir()}
    wanted = {f"{stop}.png" for stop in stops()}
    for name in sorted(wanted - kept):
        fault(name, "is missing: run ./run manual")
    for name in sorted(kept - wanted):
        fault(name, "is shown nowhere")
    for page, reader in zip(ALL, readers):
        check_texts(page, reader)
    check_links(ALL, readers)
    for link in re.findall(r"\]\((docs/manual/[^)]*)\)", read("README.md")):
        if not (root / link).is_file():
            fault("README.md", f"{link} is missing")


# The tour


def tour(command, take):
    """With the pictures' stops only. Takes them, or compares what they show."""
    before = shown()
    after = {}
    with tempfile.TemporaryDirectory() as folder:
        target = "Z:" + folder.replace("/", "\\")
        done = subprocess.run([*command, "tour", target, "--only", ",".join(stops()), "--rows", ROWS],
                              capture_output=True, text=True)
        if done.returncode:
            fault("tour", done.stdout + done.stderr)
        for stop in stops():
            found = next(pathlib.Path(folder).glob(f"[0-9][0-9]-{stop}-[0-9]*.txt"), None)
            if not found:
                fault(stop, "is no stop of the tour")
                continue
            after[stop] = described(found.read_text(encoding="utf-8"))
            if take:
                (pictures / f"{stop}.png").write_bytes(smaller(found.with_suffix(".png").read_bytes()))
            elif after[stop] != before.get(stop):
                known = before.get(stop, "").splitlines()
                new = next((line for line in after[stop].splitlines() if line not in known), "something less").strip()
                fault(stop, f"the picture is of before: run ./run manual ({new})")
    if take:
        record.write_text("".join(f"== {stop}\n{text}" for stop, text in after.items()), encoding="utf-8")


TITLES = {"index.html": "Manual de Tamvelo", **{name: title for _, pages in PAGES for name, title, _ in pages}}
(OPENED, HEARD), ALL_KEYS, SINK = operations(), keys(), sink_members()
LITERALS = literals()
CAPTIONS = {plain(line) for text in LITERALS for line in text.split("\n")}
ACCESS = " ".join(LITERALS).lower()
KEY_NAMES = {key for _, rows in ALL_KEYS.values() for key, *_ in rows} | FIXED_KEYS
EVERYTHING = "\n".join(path.read_text(encoding="utf-8", errors="ignore") for path in [
    *sources(".cpp", ".h", ".rc", ".rch", ".nsi", ".idl", ".vbs", ".manifest", ".py", ".sh", ".txt"),
    *(root / "docs").glob("*.*"), root / "README.md", root / "run"]) + "\n".join(
        [*LITERALS, *(path.name for path in [*sources(), *(root / "docs").iterdir()])])
ALL = [Page(path) for path in sorted(manual.glob("*.html"))]


def main():
    command = sys.argv[1:]
    only_check = command[:1] == ["--check"]
    command = command[only_check:]
    if command:
        tour(command, not only_check)
    if only_check:
        check([Reader(page) for page in ALL])
    else:
        for page in ALL:
            page.path.write_text(page.current(), encoding="utf-8")
    for line in faults:
        print(line)
    sys.exit(bool(faults))


if __name__ == "__main__":
    main()
