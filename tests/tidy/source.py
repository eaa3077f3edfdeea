"""One source file as the rules see it: its text, its code without comments and strings, its
includes, and the blocks in braces with what each of them is."""

import re
from dataclasses import dataclass, field
from functools import cached_property
from pathlib import PurePosixPath

LITERALS = re.compile(
    r"""
      R"(?P<mark>[^()\\\s]{0,16})\(.*?\)(?P=mark)"   # a raw string
    | "(?:\\.|[^"\\\n])*"                            # a string
    | (?<![0-9A-Fa-f])'(?:\\.|[^'\\\n])+'            # a character, not a digit separator
    | //[^\n]*
    | /\*.*?\*/
    """,
    re.VERBOSE | re.DOTALL,
)
INCLUDE = re.compile(r'^[ \t]*#[ \t]*(?:include|import)[ \t]*([<"])([^>"]+)[>"]', re.MULTILINE)
DIRECTIVE = re.compile(r"^[ \t]*#(?:[^\n\\]|\\\n|\\.)*", re.MULTILINE)
TYPE_HEAD = re.compile(r"\b(?:class|struct|union|enum)\b|@(?:interface|implementation|protocol)\b")
OBJC_METHOD = re.compile(r"^[ \t]*[-+][ \t]*\(", re.MULTILINE)


def blank(match):
    """Spaces in place of a literal or comment: lines stay where they were, and so does every
    column. The quotes stay, so that a string is still seen to be one."""
    text = match.group(0)
    kept = re.sub(r"[^\n]", " ", text)
    if text[0] == "/":
        return kept
    return '"' + kept[1:-1] + '"'


@dataclass
class Include:
    line: int
    quoted: bool
    path: str


@dataclass
class Block:
    """What stands between two braces. `kind` is namespace, type, function or other; a lambda or a
    loop inside a function is other."""

    kind: str
    head: str
    first_line: int
    last_line: int = 0
    depth_kinds: tuple = field(default=())


def kind_of(head):
    head = head.strip()
    if re.search(r'\bnamespace\b|\bextern ""$|\bextern "\s*"$', head):
        return "namespace"
    before_parenthesis = head.split("(", 1)[0]
    if TYPE_HEAD.search(re.sub(r"template\s*<[^{;]*?>\s*(?=class|struct)", "", before_parenthesis)):
        if not OBJC_METHOD.search(head):
            return "type"
    if "(" not in head:
        return "other"
    outside = head
    while (inner := re.sub(r"\([^()]*\)", "", outside)) != outside:
        outside = inner
    if "=" in outside and "operator" not in head and "[" not in head:
        return "other"
    return "function"


def without_access(head):
    return re.sub(r"^\s*(?:public|protected|private)\s*:", "", head)


def first_of(start, head):
    """Where the first word of `head` stands, which begins at `start`."""
    return start + len(head) - len(head.lstrip())


class Source:
    def __init__(self, path, text):
        self.path = PurePosixPath(path)
        self.text = text

    @cached_property
    def lines(self):
        return self.text.split("\n")

    @property
    def is_header(self):
        return self.path.suffix == ".h"

    @property
    def is_cpp(self):
        return self.path.suffix in (".h", ".cpp", ".mm", ".m")

    @cached_property
    def code(self):
        return LITERALS.sub(blank, self.text)

    @cached_property
    def statements(self):
        """The code without preprocessor lines."""
        return DIRECTIVE.sub(lambda m: re.sub(r"[^\n]", " ", m.group(0)), self.code)

    @cached_property
    def includes(self):
        return [
            Include(self.line_of(m.start(1)), m.group(1) == '"', m.group(2))
            for m in INCLUDE.finditer(self.text)
        ]

    def line_of(self, position):
        return self.text.count("\n", 0, position) + 1

    @cached_property
    def blocks(self):
        """Every block in braces, outer before inner by their first line."""
        found, open_blocks = [], []
        head_start = 0
        for token in re.finditer(r"[{};]", self.statements):
            head = self.statements[head_start : token.start()]
            if token.group() == "{":
                kind = kind_of(without_access(head))
                if kind != "type" and any(b.kind == "function" for b in open_blocks):
                    kind = "other"
                block = Block(kind, head.strip(), self.line_of(first_of(head_start, head)))
                block.depth_kinds = tuple(b.kind for b in open_blocks)
                open_blocks.append(block)
                found.append(block)
            elif token.group() == "}" and open_blocks:
                open_blocks.pop().last_line = self.line_of(token.start())
            head_start = token.end()
        return found

    @cached_property
    def statements_with_scope(self):
        """Each statement up to its semicolon, with its line and the kinds of blocks around it.
        What stands in front of a brace inside a function counts as one too."""
        found, kinds = [], []
        start, depth_of_initializer = 0, 0
        for token in re.finditer(r"[{};]", self.statements):
            head = self.statements[start : token.start()]
            if token.group() == "{":
                kind = kind_of(without_access(head))
                if depth_of_initializer or (kind == "other" and "function" not in kinds):
                    depth_of_initializer += 1
                    continue
                if kind != "type" and "function" in kinds:
                    kind = "other"
                    found.append((self.line_of(first_of(start, head)), head.strip(), tuple(kinds)))
                kinds.append(kind)
            elif token.group() == "}":
                if depth_of_initializer:
                    depth_of_initializer -= 1
                    continue
                if kinds:
                    kinds.pop()
            elif depth_of_initializer:
                continue
            else:
                found.append((self.line_of(first_of(start, head)), head.strip(), tuple(kinds)))
            start = token.end()
        return found
