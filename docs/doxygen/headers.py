# SPDX-License-Identifier: MIT
"""Shows Doxygen a public header the way it wants to see it: the // above a declaration as ///, the one behind a member as ///<,
macros of properties written out, every property with the text that it has in Qt Designer (src/designer/property_texts.cc), and
what is said of a reader or a writer for both of them."""
import pathlib
import re

ROOT = pathlib.Path(__file__).resolve().parents[2]
ESCAPED = re.compile(r"`[^`]*`|[\\@<>#&%]|::(?=\W|$)")


def property_texts():
    source = (ROOT / "src/designer/property_texts.cc").read_text(encoding="utf-8")
    return {name: "".join(re.findall(r'"([^"]*)"', words))
            for name, words in re.findall(r'\{"(\w+)",((?:\s*"[^"]*")+)\},', source)}


def escaped(words):
    """Signs that are commands or links to Doxygen stand for themselves; what is between ` stays as it is."""
    return ESCAPED.sub(lambda found: found[0] if found[0].startswith(("`", ":")) else "\\" + found[0], words)


def property_of(declaration, texts):
    """The property that a line declares, reads or writes."""
    found = re.match(r"Q_PROPERTY\(\w+ (\w+)", declaration) or re.match(
        r"(?:void Set|[\w:&<> ]+ &?)(\w+)\((?:[^()]*)\)(?: const)?;$", declaration)
    return found[1] if found and found[1] in texts else None


def written_out(line):
    """STOCKBOOK_APPEARANCE(Type, Name) as what it stands for."""
    found = re.match(r"  STOCKBOOK_APPEARANCE\((\w+), (\w+)\)", line)
    if not found:
        return [line]
    kind, name = found.groups()
    return [f"  Q_PROPERTY({kind} {name} READ {name} WRITE Set{name} NOTIFY AppearanceChanged)", " public:",
            f"  void Set{name}(const {kind}& value);", f"  {kind} {name}() const;"]


def show(text, texts):
    text = re.sub(r"#define STOCKBOOK_APPEARANCE(?:[^\n]*\\\n)*[^\n]*\n", "", text)
    lines = [each for line in text.splitlines() for each in written_out(line)]
    if lines and lines[0].startswith("// SPDX"):
        lines = ["/// \\file"] + lines[1:]
    shown = []
    said, about = [], ""  # what was said last, and of which property
    for at, line in enumerate(lines):
        comment = re.match(r"( *)// ?(.*)$", line)
        behind = re.match(r"(.*[;,}\w])  // (.*)$", line)
        bare = line.strip()
        if comment:
            below = next((each.strip() for each in lines[at:] if not each.strip().startswith("//")), "")
            # What stands alone, or above the end of something, is about no declaration, and the name of a base class about several.
            alone = below == "" or below.startswith(("}", "#", "public:", "namespace")) or re.match(r"[A-Z]\w+$", comment[2])
            mark = "//" if alone else "///"
            shown.append(f"{comment[1]}{mark} {escaped(comment[2]) if mark == '///' else comment[2]}")
        elif behind:
            shown.append(f"{behind[1]}  ///< {escaped(behind[2])}")
        else:
            name = property_of(bare, texts)
            declared = re.search(r"\b(?:Set)?(\w+)\(", bare)
            base = declared[1] if declared else ""
            if shown and shown[-1].lstrip().startswith("///"):
                said, about = [words for words in shown[-1:] if words.strip() != "///"], base
            elif not name and base and base == about and bare.endswith(";"):
                shown.extend(said)
            if name:
                if shown and shown[-1].lstrip().startswith("///"):
                    shown.append("  ///")
                shown.append(f"  /// {escaped(texts[name])}")
            shown.append(line)
    return "\n".join(shown) + "\n"

