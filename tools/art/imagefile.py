"""Writers of the image files that Windows and the panel's host load: BMP, PNG, ICO and CUR."""

import struct
import zlib

_BI_RGB = 0
_BI_BITFIELDS = 3
_LCS_SRGB = 0x73524742
_PIXELS_PER_METRE = 3780  # 96 dots per inch


def bmp24(image):
    """A 24-bit BMP; the image must be opaque, so that no transparency is lost unseen."""
    if not image.is_opaque():
        raise ValueError("a 24-bit bitmap has no alpha: flatten the image first")
    stride = (image.width * 3 + 3) & ~3
    lines = []
    for row in image.rows():
        line = b"".join(bytes((blue, green, red)) for red, green, blue, _ in row)
        lines.append(line.ljust(stride, b"\0"))
    header = _info_header(image.width, image.height, 24, stride * image.height)
    return _bmp_file(header, b"".join(reversed(lines)))


def bmp32(image):
    """A 32-bit BMP with straight alpha, its channels named by the masks of a BITMAPV4HEADER."""
    pixels = _bgra_bottom_up(image)
    header = struct.pack(
        "<IiiHHIIiiII4II36x12x",
        108,
        image.width,
        image.height,
        1,
        32,
        _BI_BITFIELDS,
        len(pixels),
        _PIXELS_PER_METRE,
        _PIXELS_PER_METRE,
        0,
        0,
        0x00FF0000,
        0x0000FF00,
        0x000000FF,
        0xFF000000,
        _LCS_SRGB,
    )
    return _bmp_file(header, pixels)


def png(image):
    """A PNG: RGBA, or RGB when nothing is transparent."""
    opaque = image.is_opaque()
    scanlines = bytearray()
    for row in image.rows():
        scanlines.append(0)
        for pixel in row:
            scanlines.extend(pixel[:3] if opaque else pixel)
    colour_type = 2 if opaque else 6
    header = struct.pack(">IIBBBBB", image.width, image.height, 8, colour_type, 0, 0, 0)
    return (
        b"\x89PNG\r\n\x1a\n"
        + _png_chunk(b"IHDR", header)
        + _png_chunk(b"IDAT", zlib.compress(bytes(scanlines), 9))
        + _png_chunk(b"IEND", b"")
    )


def ico(*images):
    """An icon file with one 32-bit image for each size."""
    return _icon_file(1, images, [(1, 32)] * len(images))


def cur(image, hot_spot):
    """A cursor file; `hot_spot` is the pixel (x, y) that points."""
    return _icon_file(2, [image], [hot_spot])


def _info_header(width, height, bits, size):
    return struct.pack(
        "<IiiHHIIiiII", 40, width, height, 1, bits, _BI_RGB, size, _PIXELS_PER_METRE, _PIXELS_PER_METRE, 0, 0
    )


def _bmp_file(header, pixels):
    offset = 14 + len(header)
    return struct.pack("<2sIHHI", b"BM", offset + len(pixels), 0, 0, offset) + header + pixels


def _bgra_bottom_up(image):
    lines = []
    for row in image.rows():
        lines.append(b"".join(bytes((blue, green, red, alpha)) for red, green, blue, alpha in row))
    return b"".join(reversed(lines))


def _and_mask(image):
    """One bit a pixel, set where nothing is drawn, for readers that ignore the alpha channel."""
    stride = (image.width + 31) // 32 * 4
    lines = []
    for row in image.rows():
        bits = "".join("0" if alpha >= 128 else "1" for *_, alpha in row)
        lines.append(int(bits.ljust(stride * 8, "0"), 2).to_bytes(stride, "big"))
    return b"".join(reversed(lines))


def _icon_file(kind, images, words):
    """`words` are the two directory words of every image: planes and bits of an icon, hot spot of a cursor."""
    directory = struct.pack("<HHH", 0, kind, len(images))
    offset = 6 + 16 * len(images)
    bodies = b""
    for image, (first, second) in zip(images, words):
        pixels = _bgra_bottom_up(image) + _and_mask(image)
        # The header counts the rows of the colour picture and of the mask together.
        body = _info_header(image.width, image.height * 2, 32, len(pixels)) + pixels
        directory += struct.pack(
            "<BBBBHHII", image.width % 256, image.height % 256, 0, 0, first, second, len(body), offset
        )
        offset += len(body)
        bodies += body
    return directory + bodies


def _png_chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
