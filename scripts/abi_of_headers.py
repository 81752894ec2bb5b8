"""What programs see of the libraries that export all that they hold: the functions and types of the installed headers.

Of types their size and the place of each member and virtual, as clang lays them out; of enumerations the names in their
order. The rest of these libraries is for the command and for each other, which are of one version.
"""
import collections
import pathlib
import re
import subprocess
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
LIBRARIES = ("libquillbrook-embedded.so", "libquillbrook-documents.so")
NAMESPACES = {"embedded", "formats", "documents"}


def installed_headers():
    """Those below the folder of quillbrook's own, which the film library's baseline holds already."""
    text = (ROOT / "cmake/install.cmake").read_text(encoding="utf-8")
    names = re.findall(r"PROJECT_SOURCE_DIR\}/((?:embedded|documents|formats)/[\w/]+\.h)", text)
    loop = re.search(r"foreach\(header ([\w ]+)\)", text).group(1).split()
    names += [f"embedded/{name}.h" for name in loop]
    return sorted(names) + sorted(f"host/{path.name}" for path in (ROOT / "host").glob("*.h"))


def without_comments(text):
    return re.sub(r"//[^\n]*", "", text)


def types_of(text):
    """Qualified names of the classes that a header defines, but for templates and those within others."""
    names, scopes, begun = [], [], 0
    for sign in re.finditer(r"[{};]", re.sub(r'"[^"\n]*"|^#.*', lambda text: " " * len(text.group()), text, flags=re.M)):
        head, begun = text[begun:sign.start()].strip(), sign.end()
        if sign.group() == "}":
            scopes.pop()
        elif sign.group() == "{":
            space = re.search(r"namespace ([\w:]+)$", head)
            scopes.append(space.group(1) if space else "")
            found = re.search(r"^(?:#.*\s+)*(?:class|struct) (\w+)(?!.*\()", head)
            if found and all(scopes[:-1]):
                names.append("::".join([*scopes[:-1], found.group(1)]))
    return names


def enumerations_of(text):
    """By name the enumerators in their order, with what their numbers are said to be."""
    found = re.findall(r"enum (?:class )?(\w+)(?: : [\w :]+)? \{(.*?)\}", text, re.S)
    return {name: [" ".join(one.split()) for one in body.split(",") if one.strip()] for name, body in found}


def layouts(headers, names):
    """Members with their places, sizes and virtuals, a list of lines by type."""
    with tempfile.TemporaryDirectory() as folder:
        witness = pathlib.Path(folder) / "witness.cpp"
        sizes = " + ".join(f"sizeof({name})" for name in names)
        witness.write_text("".join(f'#include "{header}"\n' for header in headers) + f"unsigned long sizes = {sizes};\n",
                           encoding="utf-8")
        dump = subprocess.run(["clang++-14", "-std=c++20", "-c", "-o", "/dev/null", "-Xclang", "-fdump-record-layouts",
                               "-I", ROOT, "-I", ROOT / "include", witness],
                              capture_output=True, text=True, check=True).stdout
    found = {}
    for block in dump.split("*** Dumping AST Record Layout\n")[1:]:
        head, *rows = [re.match(r"\s*([\d:-]*) *\| ( *)(.*)", line) for line in block.partition("\n\n")[0].splitlines()]
        name = head.group(3).split()[-1].removesuffix("(empty)")
        if name in names:
            found[name] = [f"{row.group(1)} {row.group(3)}".strip() for row in rows
                           if len(row.group(2)) <= 2 or "sizeof" in row.group(3)]
    return found


def virtuals_of(text):
    """By type the declarations of its virtuals in their order."""
    found, name = collections.defaultdict(list), ""
    for line in text.splitlines():
        if head := re.match(r"(?:class|struct) (\w+)", line):
            name = head.group(1)
        elif (word := line.strip()).startswith("virtual "):
            found[name].append(re.sub(r"\s*(= 0|= default)?\s*[;{].*", "", word))
    return found


def functions(build, words):
    """What the libraries define of the names in the headers, which only name the `Impl` within a class."""
    found = set()
    for library in LIBRARIES:
        told = subprocess.run(["nm", "-DC", "--defined-only", build / library], capture_output=True, text=True,
                              check=True).stdout
        for line in told.splitlines():
            kind, name = line.split(maxsplit=2)[1:]
            scopes = name.partition("@@")[0].partition("(")[0].split("::")
            if scopes[0] in NAMESPACES:
                scopes = scopes[1:]
            if kind in "TDBR" and scopes and scopes[0] in words and "Impl" not in scopes:
                found.add(name.partition("@@")[0])
    return sorted(found)


def interface(build):
    """All of it, as lists of lines by what they are of. A list may grow at its end, but those of members."""
    headers = installed_headers()
    texts = {header: without_comments((ROOT / header).read_text(encoding="utf-8")) for header in headers}
    whole = "\n".join(texts.values())
    names = [name for text in texts.values() for name in types_of(text)]
    words = set(re.findall(r"\b(\w+)\s*\(", whole)) | {name.rpartition("::")[2] for name in names}
    parts = {"function " + name: [] for name in functions(build, words)}
    parts |= {"members of " + name: lines for name, lines in layouts(headers, names).items()}
    parts |= {"virtuals of " + name: lines for name, lines in virtuals_of(whole).items()}
    parts |= {"enumeration " + name: lines for name, lines in enumerations_of(whole).items()}
    return parts


def written(parts):
    return "".join(f"{name}\n" + "".join(f"    {line}\n" for line in lines) for name, lines in sorted(parts.items()))


def read(text):
    parts = {}
    for line in text.splitlines():
        if line.startswith("    "):
            lines.append(line[4:])
        else:
            lines = parts[line] = []
    return parts


def breaks(old, new):
    """What programs would trip over that were built against the old one."""
    told = []
    for name, lines in old.items():
        now = new.get(name)
        if now is None:
            told.append(f"{name}: gone")
        elif now != lines and (name.startswith("members") or now[:len(lines)] != lines):
            other = next((pair for pair in zip(lines, now) if pair[0] != pair[1]), (lines[len(now):] or [""], now[len(lines):]))
            told.append(f"{name}: was {other[0]}, is {other[1]}")
    return told
