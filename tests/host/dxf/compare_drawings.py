"""Compares two drawing files object by object, with the tag loader of ezdxf as the reader.

What the second must have of the first: every object with a handle, with all its groups; every
header variable; every class. Left out are what a writer may put right: counts of table records,
owners, groups that state a default, back references of blocks, second objects of one handle,
values that no drawing can have (radii below 0, knots that make no spline).
"""
import re
import sys
from collections import Counter

from ezdxf.lldxf import tagger

CODE_PAGES = {"ansi_932": "cp932", "ansi_936": "gb18030", "dos850": "cp850", "ansi_949": "cp949"}
DEFAULTS = {(6, "bylayer"), (62, 256), (370, -1), (280, 0), (281, 1), (48, 1.0), (60, 0), (39, 0.0)}
# Of entities only: scales, angles, flags and extrusions that say nothing, and what is counted anew.
PLAIN = {(41, 1.0), (42, 1.0), (43, 1.0), (43, 0.0), (50, 0.0), (51, 0.0), (70, 0), (71, 0), (72, 0), (73, 0),
         (66, 1), (70, 2), (210, 0.0), (220, 0.0), (230, 1.0)}


def load(path):
    data = open(path, "rb").read()
    if data.startswith(b"AutoCAD Binary DXF"):
        return [(tag.code, tag.value) for tag in tagger.binary_tags_loader(data, errors="surrogateescape")]
    version = re.search(rb"\$ACADVER\s+1\s+(AC\d+)", data)
    page = re.search(rb"\$DWGCODEPAGE\s+3\s+(\S+)", data, re.I)
    modern = version and version.group(1) >= b"AC1021"
    name = page.group(1).decode().lower() if page else ""
    text = data.decode("utf8" if modern else CODE_PAGES.get(name, "cp1252"), "surrogateescape")
    lines = text.replace("\r\n", "\n").split("\n")
    return [(int(lines[i]), lines[i + 1]) for i in range(0, len(lines) - 1, 2)]


def kind(code):
    if 10 <= code <= 59 or 110 <= code <= 149 or 210 <= code <= 239 or 460 <= code <= 469 or 1010 <= code <= 1059:
        return float
    if 60 <= code <= 99 or 160 <= code <= 179 or 270 <= code <= 299 or 370 <= code <= 389:
        return int
    if 400 <= code <= 409 or 420 <= code <= 429 or 440 <= code <= 459 or 1060 <= code <= 1071:
        return int
    if code in (5, 105, 480, 481, 1005) or 320 <= code <= 369 or 390 <= code <= 399:
        return hex
    return str


def value(code, raw):
    if isinstance(raw, bytes):
        return raw.hex().upper()
    if 310 <= code <= 319 or code == 1004:
        return str(raw).strip().upper()
    try:
        if kind(code) is float:
            return float("%.12g" % float(raw))  # angles may turn in their last digit
        if kind(code) is int:
            return int(re.match(r"\s*[-+]?\d+", str(raw)).group())
        if kind(code) is hex:
            return "%X" % int(str(raw) or "0", 16)
    except (ValueError, AttributeError):
        pass
    text = re.sub(r"\\U\+([0-9A-Fa-f]{4})", lambda m: chr(int(m.group(1), 16)), str(raw))
    if code == 6:
        return text.lower()
    return text.strip() if code in (0, 2, 9, 100, 102) else text


def objects(tags):
    found = []
    for code, raw in tags:
        if code == 0:
            found.append((str(raw).strip(), []))
        elif code != 999 and found:
            found[-1][1].append((code, value(code, raw)))
    return found


def handle(name, groups):
    for code, content in groups:
        if code == 105 or (code == 5 and name != "DIMSTYLE"):
            return name, content
        if code == 100:
            return None
    return None


RECORDS = ("VPORT", "LTYPE", "LAYER", "STYLE", "VIEW", "UCS", "APPID", "DIMSTYLE", "BLOCK_RECORD")
FRAMES = ("SECTION", "ENDSEC", "TABLE", "ENDTAB", "EOF", "CLASS")
SPACES = ("$MODEL_SPACE", "$PAPER_SPACE")


TEXTS = ("TEXT", "ATTRIB", "ATTDEF")


def meaning(name, groups):
    """An entity's groups without those that say nothing."""
    groups = [group for group in groups if group not in PLAIN]
    if name == "MTEXT":  # the text may be cut elsewhere, the angle be told as a direction
        text = "".join(content for code, content in groups if code in (3, 1))
        groups = [group for group in groups if group[0] not in (1, 3, 50, 11, 21, 31)] + [(1, text)]
    if name in TEXTS and not any(code in (72, 73, 74) for code, _ in groups):
        groups = [group for group in groups if group[0] not in (11, 21, 31)]
    if name == "INSERT" and not any(code in (70, 71) for code, _ in groups):
        groups = [group for group in groups if group[0] not in (44, 45)]
    return groups


def impossible(name, groups):
    """The codes whose values a reader must put right, since no program could draw them."""
    if name in ("CIRCLE", "ARC") and any(code == 40 and content < 0 for code, content in groups):
        return {40}
    if name == "SPLINE":
        count = Counter(code for code, _ in groups)
        degree = dict(groups).get(71, 3)
        if count[10] and count[40] != count[10] + degree + 1:
            return {40, 70, 72}
    return set()


def data(name, groups):
    kept, skipping = [], False
    wrong = impossible(name, groups)
    groups = [group for group in groups if group[0] not in wrong]
    for group in groups if name in RECORDS else meaning(name, groups):
        skipping = skipping or group == (102, "{BLKREFS")
        if not skipping and group not in DEFAULTS and group[0] not in (5, 105, 330, 67, 410):
            kept.append(group)
        if group == (102, "}"):
            skipping = False
    return Counter(kept)


def header(found):
    variables, name = {}, None
    for section, groups in found:
        if section == "SECTION" and (2, "HEADER") in groups:
            for code, content in groups[1:]:
                if code == 9:
                    name = content
                    variables[name] = []
                elif name:
                    variables[name].append((code, content))
    return variables


def lacks(name, groups, other):
    """What the other object doesn't have; repeated groups of table records count once."""
    if name in RECORDS:
        return Counter(set(groups) - set(other))
    return groups - other


def missing_objects(found, again):
    by_handle, by_name = {}, {}
    for name, groups in again:
        by_handle.setdefault(handle(name, groups), data(name, groups))
        by_name.setdefault(name, []).append(data(name, groups))
    seen = set()
    for name, groups in found:
        if name in FRAMES or any(g[0] == 2 and str(g[1]).upper() in SPACES for g in groups):
            continue
        wanted, key = data(name, groups), handle(name, groups)
        lost = wanted
        if not groups:
            continue  # an object that holds nothing
        if name in ("ENDBLK", "SEQEND") and {code for code, _ in wanted} <= {8, 100}:
            continue  # end marks that tell nothing: of R12's spaces, of references without attributes
        if key and key not in seen and key in by_handle:
            lost = lacks(name, wanted, by_handle[key])
            seen.add(key)
            if not lost:
                continue
        # No handle, or one that stands twice: the data must be there under another.
        if not any(not lacks(name, wanted, other) for other in by_name.get(name, [])):
            yield f"{name} {key} lacks {dict(lost)}"


def compare(first, second):
    found, again = objects(load(first)), objects(load(second))
    losses = list(missing_objects(found, again))
    was, now = header(found), header(again)
    for name in was:
        if name not in ("$HANDSEED", "$ACADVER", "$HANDLING") and was[name] != now.get(name):
            losses.append(f"{name} was {was[name]}, is {now.get(name)}")
    rows = [Counter(g for g in groups if g[0] != 91) for name, groups in again if name == "CLASS"]
    for name, groups in found:
        if name == "CLASS" and Counter(g for g in groups if g[0] != 91) not in rows:
            losses.append(f"class {groups}")
    return losses


if __name__ == "__main__":
    faulty = False
    for first, second in zip(sys.argv[1::2], sys.argv[2::2]):
        for line in compare(first, second)[:20]:
            print(first, line[:300].encode("ascii", "backslashreplace").decode())
            faulty = True
    sys.exit(1 if faulty else 0)
