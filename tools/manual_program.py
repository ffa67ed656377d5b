"""What the program says of itself, for the manual: its texts, operations, keys and what sinks hear."""
import pathlib
import re

root = pathlib.Path(__file__).resolve().parent.parent


def read(path):
    return (root / path).read_text(encoding="utf-8")


def sources(*suffixes):
    rooms = "base com contract dates demo entry environment frame grid gridconfig reports search selection win setup examples idl"
    return [p for room in rooms.split() for p in sorted((root / room).rglob("*"))
            if not suffixes or p.suffix in suffixes]


def literals():
    """All texts of the program, without access keys; those that stand one after another are one."""
    found = set()
    one = r'L?"((?:[^"\\\n]|\\.)*)"'
    for path in sources(".cpp", ".h", ".rc", ".rch", ".nsi", ".nsh"):
        text = path.read_text(encoding="utf-8")
        for run in re.finditer(rf"(?:{one}\s*)+", text):
            whole = "".join(re.findall(one, run[0]))
            for escaped, plain in (("\\n", "\n"), ("\\r", ""), ("\\t", "\n"), ('\\"', '"'), ("\\\\", "\\")):
                whole = whole.replace(escaped, plain)
            found.add(whole)
    return found


def plain(text):
    return " ".join(text.replace("&", "").strip(" :…«»").split())


def operations():
    """Form to the operations that open it, and to the members of the sink that these call."""
    text = read("contract/Members.cpp")
    forms = re.findall(r'\{L"(\w+)", L"(frm\w+)"\}', text)
    opened, heard = {}, {}
    for name, form in forms:
        opened.setdefault(form, []).append(name)
    sets = {"Bit": lambda bit: 1 << bit, "Range": lambda first, last: (1 << last + 1) - (1 << first)}
    for run in re.findall(r"^constexpr OperationSet ([^;]*);", text, re.M):
        for name, value in re.findall(r"(k\w+) = (.*?)(?=,\s*k\w+ =|$)", run, re.S):
            sets[name] = eval(" ".join(value.split()), {}, sets)
    for member, bits in re.findall(r'\{L"objClsEvents", L"(\w+)",.*?,\s+([^,"]*)\},\n', text, re.S):
        for at, (_, form) in enumerate(forms):
            if eval(bits.strip(), {}, sets) >> at & 1:
                heard.setdefault(form, set()).add(member)
    return opened, heard


def menus():
    """Operation to the demo host's menu and the line in it, in the menus' order."""
    groups = re.findall(r'L"([^"]+)"', re.search(r"kGroups\[\] = \{(.*?)\}", read("demo/app/MenuBar.cpp"), re.S)[1])
    order = re.search(r"enum class Group \{(.*?)\}", read("demo/app/Operations.h"))[1].replace(" ", "").split(",")
    rows = re.findall(r'\{L"(\w+)", Group::(\w+), L"([^"]+)", \w+\}', read("demo/app/Operations.cpp"))
    return {name: (groups[order.index(group)].replace("&", ""), line.replace("&", "")) for name, group, line in rows}


def keys():
    """Form to (tools, rows of key, where, command); None is every form."""
    forms = {}
    for section in re.split(r"^## ", read("docs/keys.md"), flags=re.M)[1:]:
        title, _, body = section.partition("\n")
        tools = re.search(r"^Tools: (.*)$", body, re.M)
        rows = [tuple(row) for row in re.findall(r"^\| (.+) \| (.+) \| (.+) \|$", body, re.M)[1:]]
        for form in [None] if title == "Every form" else title.split(", "):
            forms[form] = (tools[1].split(" · ") if tools else [], rows)
    return forms


def sink_members():
    """Name to the least and the greatest number of arguments, as the contract has them."""
    members = {}
    for name, arguments in re.findall(r"^objClsEvents\.(\w+)\((.*)\)$", read("docs/host-contract.md"), re.M):
        counts = [len([a for a in text.replace("[", "").split(",") if a.strip()])
                  for text in (re.sub(r"\[.*\]", "", arguments), arguments)]
        least, most = members.get(name, counts)  # some have a row for each way
        members[name] = (min(least, counts[0]), max(most, counts[1]))
    return members
