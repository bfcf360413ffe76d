"""Reads the tables of one-line changes and turns their rows into switches in the source text."""

import dataclasses
import pathlib
import re
import zlib

TABLES = pathlib.Path(__file__).resolve().parent
FIELDS = ("in", "near", "old", "new", "by", "how", "stays")
SWITCHED = (".cpp", ".h")


class TableError(Exception):
    """What is wrong with a row, with its place."""


@dataclasses.dataclass
class Row:
    room: str
    number: int  # within its table, from 1
    place: str  # table:line, for messages
    sentence: str
    fields: dict

    @property
    def old(self):
        return self.fields["old"]

    @property
    def new(self):
        return self.fields["new"]

    @property
    def switch(self):
        """Stays as it is when other rows come and go, so that they don't make the build start over."""
        text = "\0".join(self.fields.get(field, "") for field in ("in", "near", "old", "new"))
        return zlib.crc32(text.encode())

    def is_rebuilt(self):
        return self.fields.get("how") == "rebuild" or not self.fields["in"].endswith(SWITCHED)


@dataclasses.dataclass
class Edit:
    """A piece of a file's text, and what stands there under each row's switch."""

    start: int
    end: int
    kind: str  # expression, condition, statement, or text: replaced once, whichever row is chosen
    choices: list  # of (switch, text)


def read_table(path):
    rows = []
    for line_number, line in enumerate(path.read_text().splitlines(), 1):
        place = f"{path.name}:{line_number}"
        if not line.strip() or line.startswith("#"):
            continue
        if not line[0].isspace():
            rows.append(Row(path.stem, len(rows) + 1, place, line.strip(), {}))
            continue
        field, _, value = line.strip().partition(" ")
        if field not in FIELDS or not rows or field in rows[-1].fields:
            raise TableError(f"{place}: this is no field of a row, or its second: {line.strip()}")
        rows[-1].fields[field] = value.strip()
    for row in rows:
        for field in ("in", "old", "new"):
            if field not in row.fields:
                raise TableError(f"{row.place}: {field} is missing")
        if row.fields.get("how", "rebuild") != "rebuild":
            raise TableError(f"{row.place}: how can only be rebuild")
    return rows


def rooms():
    return sorted(path.stem for path in TABLES.glob("*.txt") if path.stem != "CMakeLists")


def read_tables(room=None):
    return [row for name in ([room] if room else rooms()) for row in read_table(TABLES / f"{name}.txt")]


class Sources:
    """The files of the project, found by the end of their path, so that rows outlive a move to another folder."""

    def __init__(self, root):
        self.root = root
        self.paths = []
        for path in sorted(root.rglob("*")):
            parts = path.relative_to(root).parts
            if parts[0] not in (".git", "build") and path.is_file() and not path.is_symlink():
                self.paths.append(path)

    def find(self, row):
        name = row.fields["in"]
        found = [path for path in self.paths if f"/{path.relative_to(self.root)}".endswith(f"/{name}")]
        if len(found) != 1:
            raise TableError(f"{row.place}: {len(found)} files are named {name}")
        return found[0]


def only_place(text, part, what, row):
    if not part or text.count(part) != 1:
        raise TableError(f"{row.place}: `{what}` stands {text.count(part) if part else 0} times in {row.fields['in']}")
    return text.index(part)


def place_of(row, text):
    """Where the old text of a row begins in its file."""
    near = row.fields.get("near")
    if near is None:
        return only_place(text, row.old, "old", row)
    return only_place(text, near, "near", row) + only_place(near, row.old, "old", row)


def split_at_commas(text):
    """The parts of a list of arguments, each with where it begins; commas within brackets or quotes don't count."""
    parts, depth, begin, quote = [], 0, 0, None
    position = 0
    while position < len(text):
        character = text[position]
        if quote:
            if character == "\\":
                position += 1
            elif character == quote:
                quote = None
        elif character in "\"'" and not re.search(r"\w'$", text[: position + 1]):
            quote = character
        elif character in "([{":
            depth += 1
        elif character in ")]}":
            depth -= 1
        elif character == "," and depth == 0:
            parts.append((begin, text[begin:position]))
            begin = position + 1
        position += 1
    return parts + [(begin, text[begin:])]


def is_wrapped(text, opening, closing):
    """Whether the text's first bracket is closed by its last character."""
    if not (text.startswith(opening) and text.endswith(closing)):
        return False
    depth = 0
    for position, character in enumerate(text):
        depth += (character == opening) - (character == closing)
        if depth == 0:
            return position == len(text) - 1
    return False


def is_whole_expression(text):
    """Whether a text can stand within brackets of its own: not begun, ended or closed by halves."""
    depth = 0
    for character in re.sub(r"\"(?:\\\\.|[^\"\\\\])*\"|'(?:\\\\.|[^'\\\\])'", "0", text):
        depth += (character in "([{") - (character in ")]}")
        if depth < 0 or (depth == 0 and character == ";"):
            return False
    begins = not re.match(r"(return\b|&&|\|\||[?:<>=/%|^.,;)]|[*&+-] )", text)
    return depth == 0 and begins and not re.search(
        r"([-+*/%&|^?:<>=!~.,(\[{;])(?<!\+\+)(?<!--)$", text)


def expression_edits(row, start, old, new):
    """Switches an expression, or what differs in a list of them."""
    start += len(old) - len(old.lstrip())
    old, new = old.strip(), new.strip()
    if old == new:
        return []
    old_parts, new_parts = split_at_commas(old), split_at_commas(new)
    if len(old_parts) == len(new_parts) > 1:
        return [edit for (begin, old_part), (_, new_part) in zip(old_parts, new_parts)
                for edit in expression_edits(row, start + begin, old_part, new_part)]
    if len(old_parts) > 1 or len(new_parts) > 1:
        raise TableError(f"{row.place}: lists of different lengths can't be switched; add `how rebuild`")
    if is_wrapped(old, "{", "}") and is_wrapped(new, "{", "}"):
        return expression_edits(row, start + 1, old[1:-1], new[1:-1])
    if not (is_whole_expression(old) and is_whole_expression(new)):
        raise TableError(f"{row.place}: old and new must each be a whole expression")
    return [Edit(start, start + len(old), "expression", [(row.switch, new)])]


def constant_edits(row, text, start):
    """A constant whose value is switched can't be known to the compiler."""
    line = text.rfind("\n", 0, start) + 1
    declaration = re.match(r"\s*(static |inline )?constexpr (?=[^;{]* = )", text[line:])
    if not declaration:
        return []
    if declaration[1] == "static ":
        raise TableError(f"{row.place}: a static constexpr can't be switched; add `how rebuild`")
    word = text.index("constexpr", line)
    return [Edit(word, word + len("constexpr"), "text", [(0, "const")])]


def is_within_literal(text, start):
    before = text[text.rfind("\n", 0, start) + 1: start]
    return re.sub(r"\\.|'\"'", "", before).count('"') % 2 == 1


def edits_of(row, text):
    """What to replace in its file's text so that the row's switch shows its change."""
    start = place_of(row, text)
    old, new = row.old, row.new
    if is_within_literal(text, start):
        raise TableError(f"{row.place}: old begins within a literal; take all of that")
    if "\n" in old:
        raise TableError(f"{row.place}: the old text must lie within one line")
    if not old.endswith(";"):
        condition = re.fullmatch(r"((?:\} )?(?:else )?(?:if|while) )(\(.*\))( \{)?", old)
        if condition:
            if not (new.startswith(condition[1]) and new.endswith(condition[3] or "")):
                raise TableError(f"{row.place}: old and new must be conditions of the same kind")
            start += len(condition[1])
            new = new[len(condition[1]): len(new) - len(condition[3] or "")]
            old = condition[2]
            # The brackets are the statement's own.
            edits = expression_edits(row, start + 1, old[1:-1], new[1:-1])
            return [dataclasses.replace(edit, kind="condition") for edit in edits]
        return constant_edits(row, text, start) + expression_edits(row, start, old, new)
    assignment = re.fullmatch(r"((?:[^\"'=]|\[=\])*? = )(.*);", old)
    if assignment and new.startswith(assignment[1]) and new.endswith(";"):
        begin = start + len(assignment[1])
        return constant_edits(row, text, start) + expression_edits(row, begin, assignment[2], new[len(assignment[1]):-1])
    return [Edit(start, start + len(old), "statement", [(row.switch, new)])]


def merged(edits):
    """Several rows may change the same piece. The outer one of two pieces comes before the inner one."""
    pieces = {}
    for edit in edits:
        piece = pieces.setdefault((edit.start, edit.end, edit.kind), Edit(edit.start, edit.end, edit.kind, []))
        piece.choices += edit.choices
    return sorted(pieces.values(), key=lambda piece: (piece.start, -piece.end))


def with_switches(piece, old):
    for switch, new in piece.choices:
        if piece.kind == "expression":
            old = f"(::mutantIs<{switch}u>() ? ({new}) : ({old}))"
        elif piece.kind == "condition":
            # Each by itself, since one may turn into the other's type: a bool into an optional that has a value.
            old = f"(::mutantIs<{switch}u>() ? static_cast<bool>({new}) : static_cast<bool>({old}))"
        elif piece.kind == "statement":
            old = f"{{ if (::mutantIs<{switch}u>()) {{ {new} }} else {{ {old} }} }}"
        else:
            old = new
    return old


def switched(text, begin, end, pieces, path):
    """The text from begin to end with its pieces' switches."""
    result = ""
    while pieces:
        piece, pieces = pieces[0], pieces[1:]
        inner = [other for other in pieces if other.start < piece.end]
        if any(other.end > piece.end for other in inner):
            raise TableError(f"{path.name}: two rows change overlapping pieces; add `how rebuild` to one of them")
        pieces = pieces[len(inner):]
        result += text[begin:piece.start] + with_switches(piece, switched(text, piece.start, piece.end, inner, path))
        begin = piece.end
    return result + text[begin:end]


def switched_files(rows, sources):
    """The texts of the files that rows change, with a switch for each; every row is tried, and its fault told."""
    edits, faults = {}, []
    for row in rows:
        try:
            path = sources.find(row)
            text = path.read_text()
            if row.is_rebuilt():
                place_of(row, text)
            else:
                edits.setdefault(path, []).extend(edits_of(row, text))
        except TableError as error:
            faults.append(str(error))
    texts = {}
    for path, found in edits.items():
        try:
            text = path.read_text()
            texts[path] = switched(text, 0, len(text), merged(found), path)
        except TableError as error:
            faults.append(str(error))
    return texts, faults
