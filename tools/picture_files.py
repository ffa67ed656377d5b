"""The files that pictures are kept in: rows, from the top, of (blue, green, red, alpha)."""
import struct
import zlib


def dib(rows, height):
    """Header and pixels, bottom row first. An icon's height counts the mask that follows too."""
    data = b"".join(bytes(pixel) for row in reversed(rows) for pixel in row)
    return struct.pack("<IiiHHIIiiII", 40, len(rows[0]), height, 1, 32, 0, len(data), 0, 0, 0, 0) + data


def bitmap(rows):
    body = dib(rows, len(rows))
    return struct.pack("<2sIHHI", b"BM", 14 + len(body), 0, 0, 54) + body


def cursor_image(rows):
    """With the 1 bit mask, rows padded to 4 bytes, for what does not look at alpha."""
    size = len(rows)
    width = (size + 31) // 32 * 32
    mask = b""
    for row in reversed(rows):
        bits = "".join("0" if pixel[3] else "1" for pixel in row).ljust(width, "0")
        mask += int(bits, 2).to_bytes(width // 8, "big")
    return dib(rows, 2 * size) + mask


def png(rows):
    """As icons may hold it: a tenth of the bitmap's size."""
    lines = b"".join(b"\0" + bytes(c for b, g, r, a in row for c in (r, g, b, a)) for row in rows)
    parts = (
        (b"IHDR", struct.pack(">IIBBBBB", len(rows[0]), len(rows), 8, 6, 0, 0, 0)),
        (b"IDAT", zlib.compress(lines, 9)),
        (b"IEND", b""),
    )
    return b"\x89PNG\r\n\x1a\n" + b"".join(
        struct.pack(">I", len(data)) + tag + data + struct.pack(">I", zlib.crc32(tag + data)) for tag, data in parts)


def icon_file(kind, pictures, image, extra):
    """Kind 1 is an icon, 2 a cursor; extra: planes and bits of an icon, hot spot of a cursor."""
    directory, images = struct.pack("<HHH", 0, kind, len(pictures)), b""
    for rows in pictures:
        size, data, offset = len(rows) % 256, image(rows), 6 + 16 * len(pictures) + len(images)
        directory += struct.pack("<BBBBHHII", size, size, 0, 0, *extra, len(data), offset)
        images += data
    return directory + images


def chunk(tag, data):
    return tag + struct.pack("<I", len(data)) + data + b"\0" * (len(data) & 1)
