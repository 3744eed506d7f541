#!/usr/bin/env python3
"""Renders the vector art of res/art into the bitmap resources of the library.

Every image has one source, res/art/<name>.svg, and is rendered once for each
of the eight scale buckets (100 % to 500 %) into res/bitmaps/<id>.bmp.  The
resource script res/bitmaps.rc is written along with the bitmaps.

    scripts/render-art.sh                 render everything
    scripts/render-art.sh --check         render in memory and compare with the
                                          files on disk; fails on a difference
    scripts/render-art.sh --sheet x.png   also draw an enlarged contact sheet

Grid fitting
------------
Scaling a 16 unit drawing to 20 pixels puts its lines between the pixels, so
the shapes are fitted to the pixel grid of the target size before they are
rasterised.  Each shape of a source states by its data-fit attribute how:

box      A centred <rect>.  The distance of its outer edge from the edge of
         the image and its stroke width become whole pixels (a stroke is at
         least one pixel).
round    A centred <circle>; the same rule.  The four outermost points of the
         circle touch pixel edges, so it is never flattened on one side.
mark     A <polyline> of 45 degree strokes (check mark, chevron, slash).  The
         horizontal run of the stroke, its width times the root of two,
         becomes a whole number of pixels, at least two, and the vertices move
         to the lattice on which both edges of every stroke run exactly through
         pixel corners: then a single half covered pixel separates full from
         empty, at any size.  The caps are cut on the same lattice, and
         the mark moves along it to the place nearest to its own centre.  A
         mark mirrored about the vertical middle stays so, and a single stroke
         through the centre keeps going through the centre.
radial   A <path> of M and Z commands that repeats every eighth turn (the teeth
         of the gear).  Each vertex is taken in the frame of the nearest eighth
         turn.  The outermost vertices, the tips of the teeth, become whole
         pixels along the frame and across it; the others are hidden in the
         body and only scaled.
stretch  A centred, stroked <path> of M, C and Z commands.  It is scaled
         separately in both directions so that the outer edge of its stroke
         touches pixel edges on all four sides.

When a coordinate falls on the middle between two positions the smaller one
wins; for the distance from the edge this means the larger shape.

A <g transform="rotate(90 c c)"> round the whole drawing, with c the middle and
any multiple of 90, is not given to the rasteriser: the drawing is rendered
upright and the finished pixels are turned.  The arrows in the four directions
are therefore the same pixels.

The fitted shapes are rasterised one by one by rsvg-convert, each as a plain
coverage mask.  A mask is averaged over the symmetry its shape has, which takes
out the last differences the rasteriser leaves between left and right, and the
masks are laid over one another here, with straight alpha: a pixel partially
covered by one colour has exactly this colour.
"""

import argparse
import math
import re
import struct
import subprocess
import sys
import xml.etree.ElementTree as ElementTree
import zlib
from concurrent.futures import ThreadPoolExecutor
from fractions import Fraction
from pathlib import Path

RES = Path(__file__).resolve().parent.parent / "res"
ART = RES / "art"
BITMAPS = RES / "bitmaps"
SCRIPT = RES / "bitmaps.rc"

SCALES = (100, 125, 150, 200, 250, 300, 400, 500)
GLYPH = (16, 20, 24, 32, 40, 48, 64, 80)
ARROW = (10, 13, 15, 20, 25, 30, 40, 50)
EYE = (23, 27, 31, 35, 43, 51, 59, 67)

# name of the source, id of the 100 % bitmap, edge lengths, bits per pixel
IMAGES = (
    ("check-checked", 62024, GLYPH, 32),
    ("check-checked-disabled", 62032, GLYPH, 32),
    ("check-unchecked-disabled", 62040, GLYPH, 32),
    ("check-unchecked", 62048, GLYPH, 32),
    ("radio-checked", 62056, GLYPH, 32),
    ("radio-checked-disabled", 62064, GLYPH, 32),
    ("radio-unchecked-disabled", 62072, GLYPH, 32),
    ("radio-unchecked", 62080, GLYPH, 32),
    ("gear", 62088, GLYPH, 32),
    ("drop-arrow", 62096, ARROW, 32),
    ("drop-arrow-disabled", 62104, ARROW, 32),
    ("scroll-up", 62112, ARROW, 32),
    ("scroll-down", 62120, ARROW, 32),
    ("scroll-left", 62128, ARROW, 32),
    ("scroll-right", 62136, ARROW, 32),
    ("scroll-up-disabled", 62144, ARROW, 32),
    ("scroll-left-disabled", 62152, ARROW, 32),
    ("eye-masked", 62248, EYE, 24),
    ("eye-revealed", 62256, EYE, 24),
)

SVG = "{http://www.w3.org/2000/svg}"
EPSILON = 1e-6


class ArtError(Exception):
    """A source that does not follow the conventions above."""


# --- numbers ---------------------------------------------------------------

def snap(value, phase=0.0):
    """The nearest of the numbers n + phase; the smaller one of two."""
    return math.ceil(value - phase - 0.5 - EPSILON) + phase


def same(a, b):
    return abs(a - b) < 1e-3


def num(value):
    text = "%.6f" % value
    return text.rstrip("0").rstrip(".") if "." in text else text


def stroke_of(shape, scale):
    """Stroke width in whole pixels, 0 without a stroke."""
    if shape.get("stroke", "none") == "none":
        return 0
    return max(1, snap(float(shape.get("stroke-width", "1")) * scale))


def points_of(shape):
    values = [float(v) for v in re.split(r"[\s,]+", shape.get("points").strip())]
    return list(zip(values[0::2], values[1::2]))


def path_of(shape, commands):
    """The tokens of a path with absolute commands, and its numbers."""
    tokens = re.findall(r"[A-Za-z]|-?[0-9.]+", shape.get("d"))
    if not set(t for t in tokens if t.isalpha()) <= set(commands):
        raise ArtError("this kind of path has the commands %s only" % ", ".join(commands))
    return tokens, [float(t) for t in tokens if not t.isalpha()]


def path_text(tokens, values):
    """The tokens of a path with its numbers replaced."""
    values = iter(values)
    return " ".join(t if t.isalpha() else num(next(values)) for t in tokens)


# --- symmetries: where the pixel (x, y) of an image of edge n comes from -----

def identity(x, y, n):
    return x, y


def mirror(x, y, n):
    return n - 1 - x, y


def flip(x, y, n):
    return x, n - 1 - y


def half_turn(x, y, n):
    return n - 1 - x, n - 1 - y


def transpose(x, y, n):
    return y, x


def anti_transpose(x, y, n):
    return n - 1 - y, n - 1 - x


def quarter_left(x, y, n):
    return n - 1 - y, x


def quarter_right(x, y, n):
    return y, n - 1 - x


SYMMETRY_NONE = (identity,)
SYMMETRY_UPRIGHT = (identity, mirror)
SYMMETRY_CROSS = (identity, mirror, flip, half_turn)
SYMMETRY_SLASH = (identity, transpose, anti_transpose, half_turn)
SYMMETRY_FULL = (identity, mirror, flip, half_turn,
                 transpose, anti_transpose, quarter_left, quarter_right)

# the source of each pixel when a drawing is turned clockwise
TURNS = {0: identity, 90: quarter_right, 180: half_turn, 270: quarter_left}


# --- grid fitting ------------------------------------------------------------
#
# Every function gives the symmetry of the fitted shape and its parts, from the
# lowest to the highest: pairs of SVG markup, painted black, and the colour.

def filled(markup):
    return markup % 'fill="#000000"'


def stroked(markup, width):
    return markup % ('fill="none" stroke="#000000" stroke-width="%s"' % num(width))


def inset_parts(shape, outer, stroke, outline):
    """The parts of a shape given by the distance from the edge of the image.

    Below a stroke the fill is not drawn as far as the middle of the stroke: the
    whole shape is laid in the colour of the stroke and the inside upon it, so
    that the fill never shines through at the outer edge.
    """
    fill = shape.get("fill", "none")
    if not stroke:
        return [(filled(outline(outer)), fill)]
    if fill == "none":
        return [(stroked(outline(outer + stroke / 2), stroke), shape.get("stroke"))]
    return [(filled(outline(outer)), shape.get("stroke")),
            (filled(outline(outer + stroke)), fill)]


def fit_box(shape, unit, size):
    scale = size / unit
    x, y, width, height = (float(shape.get(k)) for k in ("x", "y", "width", "height"))
    if not (same(x, y) and same(width, height) and same(2 * x + width, unit)):
        raise ArtError("a box is square and centred")
    stroke = stroke_of(shape, scale)
    half = float(shape.get("stroke-width", "1")) / 2 if stroke else 0

    def outline(inset):
        edge = num(size - 2 * inset)
        return '<rect x="%s" y="%s" width="%s" height="%s" %%s/>' % (
            num(inset), num(inset), edge, edge)

    return SYMMETRY_FULL, inset_parts(shape, snap((x - half) * scale), stroke, outline)


def fit_round(shape, unit, size):
    scale = size / unit
    cx, cy, radius = (float(shape.get(k)) for k in ("cx", "cy", "r"))
    if not (same(2 * cx, unit) and same(2 * cy, unit)):
        raise ArtError("a round shape is centred")
    stroke = stroke_of(shape, scale)
    half = float(shape.get("stroke-width", "1")) / 2 if stroke else 0

    def outline(inset):
        return '<circle cx="%s" cy="%s" r="%s" %%s/>' % (
            num(size / 2), num(size / 2), num(size / 2 - inset))

    outer = snap((unit / 2 - radius - half) * scale)
    return SYMMETRY_FULL, inset_parts(shape, outer, stroke, outline)


def extent(points, run):
    """The centre of the rectangle a mark fills, its caps and corners included."""
    reach = [run / 4 if i in (0, len(points) - 1) else run / 2 for i in range(len(points))]
    return tuple((min(p[axis] - r for p, r in zip(points, reach))
                  + max(p[axis] + r for p, r in zip(points, reach))) / 2 for axis in (0, 1))


def fit_mark(shape, unit, size):
    scale = size / unit
    source = points_of(shape)
    run = max(2, snap(float(shape.get("stroke-width")) * math.sqrt(2) * scale))
    phase = (run % 2) / 2
    # along one diagonal direction u = x - y is constant, along the other v = x + y
    nodes = [((x - y) * scale, (x + y) * scale) for x, y in source]
    last = len(nodes) - 1
    for (u0, v0), (u1, v1) in zip(nodes, nodes[1:]):
        if same(u0, u1) == same(v0, v1):
            raise ArtError("a mark has strokes of 45 degrees only")
    mirrored = all(same(a[0] + b[0], unit) and same(a[1], b[1])
                   for a, b in zip(source, reversed(source)))
    fitted = [None] * len(nodes)
    symmetry = SYMMETRY_NONE
    if last == 1:
        (u0, v0), (u1, v1) = nodes
        if not (same(u0 + u1, 0) and same(v0 + v1, 2 * size)):
            raise ArtError("a single stroke goes through the centre")
        if same(u0, u1):
            v0 = snap(v0)
            fitted = [(0, v0), (0, 2 * size - v0)]
        else:
            u0 = snap(u0)
            fitted = [(u0, size), (-u0, size)]
        symmetry = SYMMETRY_SLASH
    else:
        for i in range(1, last):
            fitted[i] = (snap(nodes[i][0], phase), snap(nodes[i][1], phase))
        if mirrored:
            symmetry = SYMMETRY_UPRIGHT
            for i in range(1, (last + 1) // 2):
                u, v = fitted[i]
                fitted[last - i] = (size - v, size - u)
            if last % 2 == 0:
                u = fitted[last // 2][0]
                fitted[last // 2] = (u, size - u)
        for end, inner in ((0, 1), (last, last - 1)):
            u, v = fitted[inner]
            du = nodes[end][0] - nodes[inner][0]
            dv = nodes[end][1] - nodes[inner][1]
            fitted[end] = (u, snap(v + dv)) if same(du, 0) else (snap(u + du), v)
        if mirrored:
            u, v = fitted[0]
            fitted[last] = (size - v, size - u)
    fitted = [((u + v) / 2, (v - u) / 2) for u, v in fitted]
    if last > 1:
        # fitting may have moved the mark off its centre; steps of a whole pixel,
        # or of half a pixel in both directions, stay on the lattice
        wanted = [c * scale for c in extent(source, run / scale)]
        found = extent(fitted, run)
        off_x, off_y = wanted[0] - found[0], wanted[1] - found[1]
        if mirrored:
            steps = [(0, snap(off_y))]
        else:
            steps = [(snap(off_x, phase), snap(off_y, phase)) for phase in (0, 0.5)]
        move_x, move_y = min(steps, key=lambda s: math.hypot(off_x - s[0], off_y - s[1]))
        fitted = [(x + move_x, y + move_y) for x, y in fitted]
    points = " ".join("%s,%s" % (num(x), num(y)) for x, y in fitted)
    markup = '<polyline points="%s" stroke-linejoin="miter" stroke-linecap="butt" %%s/>' % points
    return symmetry, [(stroked(markup, run / math.sqrt(2)), shape.get("stroke"))]


def fit_radial(shape, unit, size):
    scale = size / unit
    tokens, values = path_of(shape, "MZ")
    local = []
    for x, y in zip(values[0::2], values[1::2]):
        x, y = x - unit / 2, unit / 2 - y
        angle = round(math.atan2(x, y) / (math.pi / 4)) * math.pi / 4
        local.append((angle,
                      x * math.sin(angle) + y * math.cos(angle),
                      x * math.cos(angle) - y * math.sin(angle)))
    tip = max(along for _, along, _ in local)
    fitted = []
    for angle, along, across in local:
        if same(along, tip):
            along = size / 2 - snap((unit / 2 - along) * scale)
            across = math.copysign(max(1, snap(abs(across) * scale)), across)
        else:
            along, across = along * scale, across * scale
        fitted.append(size / 2 + along * math.sin(angle) + across * math.cos(angle))
        fitted.append(size / 2 - along * math.cos(angle) + across * math.sin(angle))
    markup = '<path d="%s" %%s/>' % path_text(tokens, fitted)
    return SYMMETRY_FULL, [(filled(markup), shape.get("fill"))]


def fit_stretch(shape, unit, size):
    scale = size / unit
    stroke = stroke_of(shape, scale)
    half = float(shape.get("stroke-width", "1")) / 2
    tokens, values = path_of(shape, "MCZ")
    factor = []
    for axis in (values[0::2], values[1::2]):
        low, high = min(axis), max(axis)
        if not same(low + high, unit):
            raise ArtError("a stretched path is centred")
        inset = snap((low - half) * scale) + stroke / 2
        factor.append((size / 2 - inset) / (unit / 2 - low))
    fitted = [size / 2 + (value - unit / 2) * factor[i % 2] for i, value in enumerate(values)]
    markup = '<path d="%s" stroke-linejoin="%s" %%s/>' % (
        path_text(tokens, fitted), shape.get("stroke-linejoin", "miter"))
    return SYMMETRY_CROSS, [(stroked(markup, stroke), shape.get("stroke"))]


FITS = {"box": fit_box, "round": fit_round, "mark": fit_mark,
        "radial": fit_radial, "stretch": fit_stretch}


# --- rasterising -------------------------------------------------------------

def read_alpha(png, size):
    """The alpha channel of an 8 bit RGBA image, as a list of rows."""
    if png[:8] != b"\x89PNG\r\n\x1a\n":
        raise ArtError("the rasteriser gave no image")
    offset, data, header = 8, b"", None
    while offset < len(png):
        length, kind = struct.unpack(">I4s", png[offset:offset + 8])
        body = png[offset + 8:offset + 8 + length]
        if kind == b"IHDR":
            header = struct.unpack(">IIBBBBB", body)
        elif kind == b"IDAT":
            data += body
        offset += length + 12
    if header != (size, size, 8, 6, 0, 0, 0):
        raise ArtError("the rasteriser gave an image of another format")
    data = zlib.decompress(data)
    pitch = size * 4
    above = bytearray(pitch)
    rows = []
    for y in range(size):
        start = y * (pitch + 1)
        kind, line = data[start], bytearray(data[start + 1:start + 1 + pitch])
        for i in range(pitch):
            left = line[i - 4] if i >= 4 else 0
            up = above[i]
            corner = above[i - 4] if i >= 4 else 0
            if kind == 1:
                line[i] = (line[i] + left) & 255
            elif kind == 2:
                line[i] = (line[i] + up) & 255
            elif kind == 3:
                line[i] = (line[i] + (left + up) // 2) & 255
            elif kind == 4:
                guess = left + up - corner
                nearest = min((abs(guess - left), 0, left), (abs(guess - up), 1, up),
                              (abs(guess - corner), 2, corner))
                line[i] = (line[i] + nearest[2]) & 255
        above = line
        rows.append(list(line[3::4]))
    return rows


def rasterise(markup, size, symmetry):
    """Coverage of one shape, 0 to 1, averaged over its symmetry."""
    document = ('<svg xmlns="http://www.w3.org/2000/svg" width="%d" height="%d" '
                'viewBox="0 0 %d %d">%s</svg>' % (size, size, size, size, markup))
    result = subprocess.run(
        ["rsvg-convert", "--format=png", "--width=%d" % size, "--height=%d" % size],
        input=document.encode(), stdout=subprocess.PIPE, check=True)
    alpha = read_alpha(result.stdout, size)
    mask = []
    for y in range(size):
        row = []
        for x in range(size):
            total = 0
            for source in symmetry:
                sx, sy = source(x, y, size)
                total += alpha[sy][sx]
            row.append(Fraction(total, 255 * len(symmetry)))
        mask.append(row)
    return mask


def colour_of(text):
    if not re.fullmatch(r"#[0-9a-f]{6}", text or ""):
        raise ArtError("a colour is written #rrggbb")
    return tuple(int(text[i:i + 2], 16) for i in (1, 3, 5))


def layers_of(shape, unit, size):
    """The coverage masks and colours of the parts of a shape."""
    fit = FITS.get(shape.get("data-fit"))
    if fit is None:
        raise ArtError("no known data-fit on <%s>" % shape.tag.replace(SVG, ""))
    symmetry, parts = fit(shape, unit, size)
    return [(rasterise(markup, size, symmetry), colour_of(colour)) for markup, colour in parts]


def compose(layers, size):
    """Lays masks over one another; rows of (red, green, blue, alpha)."""
    image = []
    for y in range(size):
        row = []
        for x in range(size):
            alpha, colour = Fraction(0), (Fraction(0),) * 3
            for mask, paint in layers:
                cover = mask[y][x]
                if not cover:
                    continue
                under = alpha * (1 - cover)
                alpha = cover + under
                colour = tuple((p * cover + c * under) / alpha
                               for p, c in zip(paint, colour))
            level = int(alpha * 255 + Fraction(1, 2))
            if level:
                row.append(tuple(int(c + Fraction(1, 2)) for c in colour) + (level,))
            else:
                row.append((0, 0, 0, 0))
        image.append(row)
    return image


def turn(image, clockwise):
    size = len(image)
    source = TURNS[clockwise % 360]
    rows = []
    for y in range(size):
        places = [source(x, y, size) for x in range(size)]
        rows.append([image[sy][sx] for sx, sy in places])
    return rows


def read_art(name):
    """Unit length, clockwise turn and the shapes of a source."""
    root = ElementTree.parse(ART / (name + ".svg")).getroot()
    box = [float(v) for v in root.get("viewBox").split()]
    if box[:2] != [0, 0] or box[2] != box[3]:
        raise ArtError("the view box is a square at the origin")
    unit = box[2]
    shapes = [e for e in root if e.tag != SVG + "title"]
    angle = 0
    if len(shapes) == 1 and shapes[0].tag == SVG + "g":
        match = re.fullmatch(r"rotate\((\d+) ([\d.]+) ([\d.]+)\)", shapes[0].get("transform"))
        if not match or any(not same(float(c) * 2, unit) for c in match.groups()[1:]):
            raise ArtError("a group is turned about the middle")
        angle = int(match.group(1))
        if angle % 90:
            raise ArtError("a group is turned by multiples of 90 degrees")
        shapes = list(shapes[0])
    return unit, angle, shapes


def render(name, size):
    try:
        unit, angle, shapes = read_art(name)
        layers = []
        for shape in shapes:
            layers += layers_of(shape, unit, size)
        return turn(compose(layers, size), angle)
    except ArtError as error:
        raise ArtError("%s.svg at %d pixels: %s" % (name, size, error)) from None


# --- files -------------------------------------------------------------------

def over(pixel, ground):
    """An opaque pixel: a straight alpha one laid over a ground colour."""
    alpha = pixel[3]
    return tuple((p * alpha + g * (255 - alpha) + 127) // 255
                 for p, g in zip(pixel, ground))


def bitmap(image, bits):
    """A bottom-up BMP file, BGRA with straight alpha or BGR on white."""
    size = len(image)
    rows = []
    for line in reversed(image):
        if bits == 32:
            row = b"".join(bytes((b, g, r, a)) for r, g, b, a in line)
        else:
            row = b"".join(bytes(reversed(over(p, (255, 255, 255)))) for p in line)
        rows.append(row + bytes(-len(row) % 4))
    pixels = b"".join(rows)
    info = struct.pack("<IiiHHIIiiII", 40, size, size, 1, bits, 0, len(pixels), 0, 0, 0, 0)
    head = struct.pack("<2sIHHI", b"BM", 14 + 40 + len(pixels), 0, 0, 14 + 40)
    return head + info + pixels


def resource_script():
    lines = ["// Bitmap resources of the library, each image for the scales",
             "// %s percent." % ", ".join(map(str, SCALES)),
             "// Written by tools/render_art.py from the drawings in res/art; do not edit."]
    for name, first, sizes, bits in IMAGES:
        lines += ["", "// %s, %d bit, %d to %d pixels" % (name, bits, sizes[0], sizes[-1])]
        lines += ['%d BITMAP "bitmaps/%d.bmp"' % (first + i, first + i)
                  for i in range(len(sizes))]
    return ("\n".join(lines) + "\n").encode("ascii")


def contact_sheet(path, images, enlarge, names):
    """All sizes of the named images, enlarged pixel by pixel, on white and grey."""
    gap = 8
    rows = []
    for name, _, sizes, _ in IMAGES:
        if names and name not in names:
            continue
        for ground in ((255, 255, 255), (229, 229, 229)):
            width = sum(s * enlarge + gap for s in sizes) + gap
            lines = [[ground] * width for _ in range(sizes[-1] * enlarge + 2 * gap)]
            left = gap
            for size in sizes:
                top = gap + (sizes[-1] - size) * enlarge
                for y, line in enumerate(images[name, size]):
                    for x, pixel in enumerate(line):
                        # the opaque images stand on white wherever they are shown
                        colour = over(pixel, (255, 255, 255) if name.startswith("eye") else ground)
                        for dy in range(enlarge):
                            start = left + x * enlarge
                            target = lines[top + y * enlarge + dy]
                            target[start:start + enlarge] = [colour] * enlarge
                left += size * enlarge + gap
            rows += lines
    width = max(len(line) for line in rows)
    raw = b"".join(b"\0" + b"".join(bytes(c) for c in line + [line[0]] * (width - len(line)))
                   for line in rows)

    def chunk(kind, body):
        return (struct.pack(">I", len(body)) + kind + body
                + struct.pack(">I", zlib.crc32(kind + body)))

    header = struct.pack(">IIBBBBB", width, len(rows), 8, 2, 0, 0, 0)
    path.write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header)
                     + chunk(b"IDAT", zlib.compress(raw, 9)) + chunk(b"IEND", b""))


def main():
    parser = argparse.ArgumentParser(description="Renders res/art into res/bitmaps.")
    parser.add_argument("--check", action="store_true",
                        help="compare with the files on disk instead of writing them")
    parser.add_argument("--sheet", type=Path, metavar="PNG",
                        help="also draw a contact sheet of all images")
    parser.add_argument("--only", nargs="+", default=[], metavar="NAME",
                        help="the images shown on the contact sheet")
    parser.add_argument("--enlarge", type=int, default=4, metavar="N",
                        help="pixels of the sheet for each pixel of an image")
    options = parser.parse_args()

    keys = [(name, size) for name, _, sizes, _ in IMAGES for size in sizes]
    try:
        with ThreadPoolExecutor() as pool:
            images = dict(zip(keys, pool.map(lambda key: render(*key), keys)))
    except ArtError as error:
        print("render_art: %s" % error, file=sys.stderr)
        return 1

    files = {SCRIPT: resource_script()}
    for name, first, sizes, bits in IMAGES:
        for index, size in enumerate(sizes):
            files[BITMAPS / ("%d.bmp" % (first + index))] = bitmap(images[name, size], bits)

    if options.sheet:
        contact_sheet(options.sheet, images, options.enlarge, options.only)

    stray = sorted(set(BITMAPS.glob("*.bmp")) - set(files))
    if options.check:
        wrong = [p for p in sorted(files) if not p.is_file() or p.read_bytes() != files[p]]
        for path in wrong + stray:
            print("render_art: %s differs from the drawings" % path.relative_to(RES),
                  file=sys.stderr)
        return 1 if wrong or stray else 0

    BITMAPS.mkdir(exist_ok=True)
    for path in stray:
        path.unlink()
    for path, content in files.items():
        path.write_bytes(content)
    print("render_art: %d bitmaps and %s written" % (len(files) - 1, SCRIPT.name))
    return 0


if __name__ == "__main__":
    sys.exit(main())
