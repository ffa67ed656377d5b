"""The manual's pictures: PNG files with a palette, and the words that say what they show."""
import collections
import re
import struct
import zlib

MONTH = "(?:enero|febrero|marzo|abril|mayo|junio|julio|agosto|septiembre|octubre|noviembre|diciembre)"
DAY = "(?:lunes|martes|miércoles|jueves|viernes|sábado|domingo)"


def described(text):
    """What the demo host wrote of a window, without what another day or machine shows otherwise."""
    def undated(match):
        shown = re.sub(r"\d+", "#", match[0])
        shown = re.sub(rf"{DAY}, semana #(?: de #)?", "(día)", shown)
        return re.sub(rf"{MONTH}(?: de #)?(?: a {MONTH})?(?: de #)?", "(mes)", shown)

    text = re.sub(r"(Static 508 [^«]*)«.*»", r"\1«(impresora)»", text)  # which one is the machine's affair
    return re.sub("«.*»", undated, text)


def chunks(data):
    at = 8
    while at < len(data):
        size, kind = struct.unpack(">I4s", data[at:at + 8])
        yield kind, data[at + 8:at + 8 + size]
        at += 12 + size


def size_of(path):
    return struct.unpack(">II", path.read_bytes()[16:24])


def rows_of(data):
    """Width, height and the rows of (red, green, blue) of a PNG file of 8 bits a colour."""
    parts = list(chunks(data))
    width, height, depth, colours = struct.unpack(">IIBB", parts[0][1][:10])
    if (depth, colours) != (8, 2):
        raise ValueError("not the kind of PNG that the tour writes")
    raw = zlib.decompress(b"".join(body for kind, body in parts if kind == b"IDAT"))
    stride, above, rows = 3 * width, bytes(3 * width), []
    for y in range(height):
        start = y * (stride + 1)
        way, row = raw[start], bytearray(raw[start + 1:start + 1 + stride])
        for x in range(stride):
            left = row[x - 3] if x >= 3 else 0
            up, corner = above[x], above[x - 3] if x >= 3 else 0
            guess = (0, left, up, (left + up) // 2)[way] if way < 4 else min(
                (left, up, corner), key=lambda colour: abs(left + up - corner - colour))
            row[x] = (row[x] + guess) & 255
        rows.append(list(zip(row[0::3], row[1::3], row[2::3])))
        above = row
    return width, height, rows


def smaller(data):
    """The same picture with a palette; of more than 256 colours the rarest become their nearest."""
    width, height, rows = rows_of(data)
    count = collections.Counter(colour for row in rows for colour in row)
    palette = [colour for colour, _ in count.most_common(256)]
    place = {colour: at for at, colour in enumerate(palette)}
    for colour in count:
        if colour not in place:
            place[colour] = min(range(len(palette)), key=lambda at: sum((a - b) ** 2 for a, b in zip(palette[at], colour)))
    pixels = b"".join(b"\0" + bytes(place[colour] for colour in row) for row in rows)

    def chunk(kind, body):
        return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))

    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 3, 0, 0, 0))
            + chunk(b"PLTE", b"".join(bytes(colour) for colour in palette))
            + chunk(b"IDAT", zlib.compress(pixels, 9)) + chunk(b"IEND", b""))
