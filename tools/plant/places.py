"""Where a fault can be planted: by the look of the text. What does not compile is dropped by plant.py."""
import random
import re

kinds = {"condition": 40, "left out": 30, "constant": 20, "arguments": 10}  # of 100 places
keywords = {"return", "throw", "if", "for", "while", "switch", "delete", "catch", "sizeof", "break", "continue", "else"}


def closing(text, at):
    """The place of the bracket that closes the one at `at`."""
    depth = 0
    for i in range(at, len(text)):
        depth += (text[i] in "({[") - (text[i] in ")}]")
        if depth == 0:
            return i
    return len(text) - 1


def statement_end(text, at):
    while text[at] not in ";}" and at < len(text) - 1:
        if text[at] in "({[":
            at = closing(text, at)
            if text[at] == "}":
                break
        at += 1
    return at + 1


def bare(text):
    """As long as the text, without comments, letters, directives, labels, the trace, and what is no run-time code."""
    def blank(match):
        return re.sub(r"[^\n]", " ", match[0])

    def letters(match):
        quote = match[0].find(match[0][-1])
        return blank(match) if match[0][0] == "/" else match[0][:quote + 1] + "_" * (len(match[0]) - quote - 2) + match[0][-1]

    text = re.sub(r"//[^\n]*|/\*.*?\*/|L?\"(?:\\.|[^\"\\\n])*\"|(?<!\d)L?'(?:\\.|[^'\\\n])+'", letters, text, flags=re.S)
    text = re.sub(r"^ *#[^\n]*|\bcase\b[^\n;{]*?(?<!:):(?!:)|^[^\n]*\bTrace::[^\n]*|\[\d+\]", blank, text, flags=re.M)
    for match in re.finditer(r"\b(constexpr|static_assert|enum|using)\b(?! \()", text):
        end = statement_end(text, match.start())
        text = text[:match.start()] + re.sub(r"[^\n]", " ", text[match.start():end]) + text[end:]
    return text


def split(code, start, end, separators):
    """The parts of code[start:end] between separators that stand in no bracket: (start, end) of each."""
    parts, at, begin = [], start, start
    while at < end:
        found = next((s for s in separators if code.startswith(s, at)), None)
        if found:
            parts.append((begin, at))
            begin = at + len(found)
        at = closing(code, at) + 1 if code[at] in "({[" else at + len(found or " ")
    return parts + [(begin, end)]


def conditions(text, code, start, end):
    """Each operand turned, each comparison moved by one: (start, end, with the fault, as it is shown)"""
    for first, last in split(code, start, end, (" && ", " || ")):
        first += len(code[first:last]) - len(code[first:last].lstrip())
        old = text[first:last]
        yield first, last, "((%s) ? !@ : @)" % old, "not (%s)" % old
        sides = split(code, first, last, (" <= ", " >= ", " < ", " > "))
        if len(sides) == 2:
            sign = code[sides[0][1]:sides[1][0]].strip()
            moved = "%s %s %s" % (text[first:sides[0][1]], sign[0] if sign[1:] else sign + "=", text[sides[1][0]:last])
            yield first, last, "(@ ? %s : %s)" % (moved, old), moved


def candidates(text):
    """(kind, start, end, text with the fault, as it is shown); @ stands for the switch."""
    code = bare(text)
    for match in re.finditer(r"\b(?:if|while) \(|\breturn (?=[^;]*(?: && | \|\| | [<>=!]=? |!))", code):
        start = match.end()
        end = closing(code, start - 1) if code[start - 1] == "(" else statement_end(code, start) - 1
        if not re.match(r"const |auto |[\w:]+ \w+ = ", code[start:end]) and not re.search("[;?{]", code[start:end]):
            for place in conditions(text, code, start, end):
                yield "condition", *place
    for match in re.finditer(r"(?<![\w.\"])(?:(\d+)[uUlL]*|(true|false)|L?\"\w*\")(?![\w.])", code):
        old = text[match.start():match.end()]
        if match[1]:
            yield "constant", *match.span(), "(@ ? %s + 1 : %s)" % (old, old), str(int(match[1]) + 1)
        elif match[2]:
            yield "constant", *match.span(), *(("!@", "false") if old == "true" else ("@", "true"))
        elif re.fullmatch(r'L?"[^ ]+"', old):  # sentences are for people
            yield "constant", *match.span(), '(@ ? %s" : %s)' % (old[:old.index('"') + 1], old), '""'
    for match in re.finditer(r"(?<=[;{}:])\s+((?:\+\+|--)?(?:[\w:]|->|\.|\[\w+\])+)(?=\(| [-+|&]?= |;)", code):
        start, end = match.start(1), statement_end(code, match.start(1))
        if match[1] not in keywords and code[end - 1] == ";":
            yield "left out", start, end, "if (!@) { %s }" % text[start:end], "nothing"
    for match in re.finditer(r"(?<=[ (!])(?:[\w:]|->|\.)+\w\(", code):
        start, end = match.start(), closing(code, match.end() - 1) + 1
        parts = [text[a:b].strip() for a, b in split(code, match.end(), end - 1, (",",))]
        for i in range(len(parts) - 1):
            if parts[i] != parts[i + 1] and match[0][:-1] not in keywords:
                swapped = match[0] + ", ".join(parts[:i] + [parts[i + 1], parts[i]] + parts[i + 2:]) + ")"
                yield "arguments", start, end, "(@ ? %s : %s)" % (swapped, text[start:end]), swapped


class Place:
    def __init__(self, root, file, start, end, fault, title):
        self.file, self.start, self.end, self.fault, self.title = file, start, end, fault, title
        text = (root / file).read_text()
        self.lines = set(range(text.count("\n", 0, start) + 1, text.count("\n", 0, end) + 2))

    def __str__(self):
        return "%s:%d %s" % (self.file, min(self.lines), self.title)


def chance(root, storey, seed):
    """The places of a storey in the order of chance."""
    pick, pools = random.Random("%s %s" % (seed, storey)), {kind: [] for kind in kinds}
    for path in sorted((root / storey).glob("*.cpp")):
        for kind, start, end, fault, shown in candidates(text := path.read_text()):
            title = re.sub(r"\s+", " ", "%s: %s -> %s" % (kind, text[start:end], shown))
            pools[kind].append((path.relative_to(root).as_posix(), start, end, fault, title))
    while any(pools.values()):
        kind = pick.choices(list(kinds), [weight if pools[k] else 0 for k, weight in kinds.items()])[0]
        yield Place(root, *pools[kind].pop(pick.randrange(len(pools[kind]))))
