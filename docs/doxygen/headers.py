# SPDX-License-Identifier: MIT
"""Shows Doxygen a public header the way it wants to see it: the // above a declaration as ///, the one behind a member as ///<,
macros of properties written out, every property with the text that it has in Qt Designer (src/designer/property_texts.cc), and
what is said of a reader or a writer for both of them and for their property. A comment that begins with "These" or "Both" is about
all declarations below it, up to the next comment or empty line."""
import pathlib
import re

ROOT = pathlib.Path(__file__).resolve().parents[2]
GROUP = re.compile(r"(These|Both)\b")
ENDS = ("}", "#", "public:", "protected:", "private:", "Q_SIGNALS", "namespace")
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
    """STOCKBOOK_APPEARANCE(Type, Name) or STOCKBOOK_HEIGHT(Name) as what it stands for."""
    found = re.match(r"  STOCKBOOK_(?:APPEARANCE\((\w+), |HEIGHT\()(\w+)\)", line)
    if not found:
        return [line]
    kind, name = found[1] or "float", found[2]
    property_kind, write = (kind, "Set") if found[1] else ("double", "Write")
    return [f"  Q_PROPERTY({property_kind} {name} READ {name} WRITE {write}{name} NOTIFY AppearanceChanged)",
            f"  void Set{name}(const {kind}& value);", f"  {kind} {name}() const;"]


def base_of(declaration):
    """What a property, its reader and its writer are called alike: dropcolumn for SetDropColumn and drop_column."""
    found = re.match(r"Q_PROPERTY\([\w:]+ (\w+)", declaration) or re.search(r"\b(?:Set)?(\w+)\(", declaration)
    return found[1].replace("_", "").lower() if found else ""


class Reference:
    """The lines for Doxygen of the lines of a header."""

    def __init__(self, lines, texts):
        self.lines, self.texts = lines, texts
        self.shown = []
        self.block = []  # the comment just above
        self.group, self.indent = [], 0  # a comment about all that follows, and how far it stands in
        self.said, self.about = [], ""  # the last comment above a declaration, and what that is called
        self.accessors = {}  # what is said of readers and writers

    @staticmethod
    def indent_of(line):
        return len(line) - len(line.lstrip())

    def alone(self, at, words):
        """What stands alone, or above the end of something, is about no declaration, and the name of a base class about several."""
        below = next((each.strip() for each in self.lines[at:] if not each.strip().startswith("//")), "")
        return below == "" or below.startswith(ENDS) or re.match(r"[A-Z]\w+$", words)

    def take_comment(self, at, indent, words):
        if not self.block:
            self.group, self.indent = [], len(indent)
        if self.alone(at, words):
            self.shown.append(f"{indent}// {words}")
            return
        self.block = [*self.block, f"{indent}/// {escaped(words)}"]
        if self.group or len(self.block) == 1 and GROUP.match(words):
            self.group = self.block

    def take_line(self, line):
        bare = line.strip()
        behind = re.match(r"(.*[;,}\w]) {2,}// (.*)$", line)
        if not bare or bare.startswith(ENDS):
            if not bare.startswith("}") or self.indent_of(line) < self.indent:
                self.group = []
        elif not behind and not (self.shown and re.match(r" *template <.*>$", self.shown[-1])):
            self.block = self.above(line)
        self.shown.extend(self.block)
        self.block = []
        self.shown.append(f"{behind[1]}  ///< {escaped(behind[2])}" if behind else line)

    def above(self, line):
        """What is said of the declaration that begins on a line."""
        bare, base = line.strip(), base_of(line.strip())
        words = self.block
        if words:
            self.said, self.about = words, base
        elif self.group and self.indent_of(line) == self.indent:
            words = self.group
        elif bare.startswith("Q_PROPERTY"):
            words = self.accessors.get(base, [])
        elif base and base == self.about and bare.endswith((";", "}")):
            words = self.said
        if words and re.match(r"  (?:void Set\w+\(|[\w:&<> ]+[ &]\w+\(\) const)", line):
            self.accessors.setdefault(base, words)
        name = property_of(bare, self.texts)
        if not name:
            return words
        return [f"  /// {escaped(self.texts[name])}", *(["  ///"] if words else []), *words]

    def show(self):
        for at, line in enumerate(self.lines):
            comment = re.match(r"( *)// ?(.*)$", line)
            if comment:
                self.take_comment(at, comment[1], comment[2])
            else:
                self.take_line(line)
        return self


def show(text, texts):
    text = re.sub(r"#define STOCKBOOK_(?:APPEARANCE|HEIGHT)(?:[^\n]*\\\n)*[^\n]*\n", "", text)
    lines = [each for line in text.splitlines() for each in written_out(line)]
    if lines and lines[0].startswith("// SPDX"):
        lines = ["/// \\file"] + lines[1:]
    # The first reading finds what is said below of the accessors of the properties above.
    first, second = Reference(lines, texts).show(), Reference(lines, texts)
    second.accessors = first.accessors
    return "\n".join(second.show().shown) + "\n"
