#!/usr/bin/env python3
"""Makes the manual pages of the file formats of the documents that tell of them: make_format_pages.py VERSION FOLDER

Each line of `PAGES` is a document and its page in section 5. What is read is what those documents use: headings, paragraphs,
lists, tables, indented blocks, `code`, *stress*, **stress** and links.
"""

import pathlib
import re
import sys

DOCUMENTS = pathlib.Path(__file__).resolve().parent.parent / "docs"
PAGES = {
    "formats.md": ("quillbrook-formats", "files that quillbrook writes"),
    "logs.md": ("quillbrook-logs", "logs that quillbrook reads"),
    "logging-tables.md": ("quillbrook-logging-tables", "tables that tie video to film"),
}


def escaped(text):
    text = text.replace("\\", "\\e").replace("-", "\\-")
    return re.sub(r"^([.'])", r"\\&\1", text)


def inline(text):
    """Words within a paragraph: code and stress in other fonts, links by what they are called."""
    text = re.sub(r"\[([^\]]*)\]\([^)]*\)", r"\1", text)
    parts = re.split(r"(`[^`]+`|\*\*[^*]+\*\*|(?<![\w*])\*[^* ][^*]*\*)", text)
    result = ""
    for part in parts:
        if part.startswith("`"):
            result += "\\fB" + escaped(part[1:-1]).replace("\\&", "") + "\\fR"
        elif part.startswith("*"):
            result += "\\fI" + escaped(part.strip("*")).replace("\\&", "") + "\\fR"
        else:
            result += escaped(part) if not result else escaped(part).replace("\\&", "")
    return result.replace("\\|", "|")


def cells_of(line):
    return [cell.strip() for cell in re.split(r"(?<!\\)\|", line.strip().strip("|"))]


def table(lines):
    """The first column as the name of an entry, the others with the names of their columns before them."""
    names = cells_of(lines[0])
    out = []
    for line in lines[2:]:
        cells = cells_of(line)
        out += [".TP", inline(cells[0]) or "\\ "]
        said = [
            inline(cell) if len(names) == 2 else f"{inline(name)}: {inline(cell)}" if name else inline(cell)
            for name, cell in zip(names[1:], cells[1:])
            if cell
        ]
        for i, text in enumerate(said or ["\\ "]):
            out += ([".br"] if i else []) + [text]
    return out


def blocks_of(lines):
    """Lines that belong together, with what they are."""
    block, kind = [], None
    for line in lines + [""]:
        here = (
            "end" if not line.strip()
            else "heading" if line.startswith("#")
            else "table" if line.startswith("|")
            else "code" if line.startswith("    ") and kind in (None, "code")
            else "list" if re.match(r"[-*] |\d+\. ", line)
            else "text"
        )
        if kind == "list" and here == "text":
            here = "list"
        if kind == "code" and here == "end" and block:
            block.append("")
            continue
        if block and (here != kind or here == "heading"):
            yield kind, block
            block = []
        kind = None if here == "end" else here
        if kind:
            block.append(line)
    if block:
        yield kind, block


def listed(lines):
    items = []
    for line in lines:
        if re.match(r"[-*] |\d+\. ", line):
            items.append(re.sub(r"^([-*]|\d+\.) ", "", line))
        else:
            items[-1] += " " + line.strip()
    return [text for item in items for text in (".IP \\(bu 2", inline(item))]


def code(lines):
    while lines and not lines[-1]:
        lines = lines[:-1]
    return [".PP", ".nf"] + [escaped(line) for line in lines] + [".fi"]


def body(lines):
    out = []
    title_seen = in_contents = False
    for kind, block in blocks_of(lines):
        if kind == "heading":
            marks, title = block[0].split(" ", 1)
            if not title_seen:
                out.append(".SH DESCRIPTION")
                title_seen = in_contents = True
            else:
                in_contents = False
                out.append((".SH " if len(marks) == 2 else ".SS ") + escaped(title.replace("`", "")))
        elif kind == "table":
            out += table(block)
        elif kind == "code":
            out += code(block)[1 if out and out[-1].startswith((".SH", ".SS")) else 0 :]
        elif kind == "list":
            out += [] if in_contents and "](#" in block[0] else listed(block)
        else:
            out += ([] if out and out[-1].startswith((".SH", ".SS")) else [".PP"]) + [inline(" ".join(b.strip() for b in block))]
    return out


def page(document, name, about, version):
    lines = (DOCUMENTS / document).read_text(encoding="utf-8").splitlines()
    head = [
        f'.TH {escaped(name.upper())} 5 "" "quillbrook {version}" "File Formats"',
        ".SH NAME", f"{escaped(name)} \\- {about}",
    ]
    others = sorted(other for other, _ in PAGES.values() if other != name)
    tail = [".SH SEE ALSO", ".BR quillbrook (1) ,"]
    tail += [f".BR {escaped(other)} (5)" + (" ," if other != others[-1] else "") for other in others]
    return "\n".join(head + body(lines) + tail) + "\n"


def main():
    version, folder = sys.argv[1], pathlib.Path(sys.argv[2])
    folder.mkdir(parents=True, exist_ok=True)
    for document, (name, about) in PAGES.items():
        (folder / f"{name}.5").write_text(page(document, name, about, version), encoding="utf-8")


if __name__ == "__main__":
    main()
