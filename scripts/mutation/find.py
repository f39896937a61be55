"""Finds the places of a source file that can be mutated."""

import dataclasses
import re

from clang.cindex import Config, CursorKind, Index, TranslationUnit, TypeKind

Config.set_library_file("/usr/lib/llvm-14/lib/libclang.so.1")

RELATIONS = {b"<": "less", b"<=": "lessOrEqual", b">": "greater", b">=": "greaterOrEqual"}
CONDITIONAL = {
    CursorKind.IF_STMT,
    CursorKind.WHILE_STMT,
    CursorKind.DO_STMT,
    CursorKind.FOR_STMT,
    CursorKind.CONDITIONAL_OPERATOR,
}
JUMPS = {CursorKind.BREAK_STMT, CursorKind.CONTINUE_STMT}
NUMBER = re.compile(rb"(\d[\d']*\.?\d*(e[+-]?\d+)?|0x[\da-f']+)(u|l|ul|z|uz|f|ms|s|us|ns)?$", re.I)
# A literal below one of these is read by the compiler, not by the program.
COMPILED = {
    CursorKind.CASE_STMT,
    CursorKind.ENUM_CONSTANT_DECL,
    CursorKind.STATIC_ASSERT,
    CursorKind.DECL_REF_EXPR,
    CursorKind.MEMBER_REF_EXPR,
    CursorKind.TYPE_REF,
    CursorKind.TEMPLATE_REF,
    CursorKind.TEMPLATE_NON_TYPE_PARAMETER,
}
# How deep a wrap stands around another of the same extent.
RANK = {"swap": 0, "drop": 1, "negate": 2, "boundary": 3, "constant": 4}


@dataclasses.dataclass
class Mutant:
    """One change of one place: [start, end) are bytes of the file."""

    kind: str  # swap, drop, negate, boundary or constant
    start: int
    end: int
    line: int
    text: str  # what is changed, on one line
    prefix: str = ""  # "{n}" stands for the mutant's number
    suffix: str = ""
    comma: tuple | None = None  # the operator that a comma replaces: (start, end)
    run: list = dataclasses.field(default_factory=list)  # of a swap: extents of all calls in a row
    assigns: bool = False  # of a swap: one of the two is an assignment, which is not tried
    number: int = -1
    file: str = ""


def arguments_of(command):
    """The options of a compile command that a parser needs."""
    kept, skip = [], False
    for word in command[1:]:
        if skip:
            skip = False
        elif word in ("-o", "-c", "-MF", "-MT", "-MQ"):
            skip = word != "-c"
        elif word.startswith(("-I", "-D", "-std", "-isystem", "-pthread")) or kept[-1:] == ["-isystem"]:
            kept.append(word)
    return kept


class Finder:
    """Walks one file's tree and notes its mutants."""

    def __init__(self, path, source, arguments):
        self.path = path
        self.source = source
        options = TranslationUnit.PARSE_DETAILED_PROCESSING_RECORD
        self.unit = Index.create().parse(str(path), args=["-xc++", *arguments], options=options)
        errors = [d for d in self.unit.diagnostics if d.severity >= 3]
        if errors:
            raise SystemExit(f"mutants: {path} cannot be read: {errors[0]}")
        self.macros = [
            (c.extent.start.offset, c.extent.end.offset)
            for c in self.unit.cursor.get_children()
            if c.kind == CursorKind.MACRO_INSTANTIATION and self.is_here(c)
        ]
        self.found = []
        self.assignments = set()  # where statements begin that call an operator such as `=`
        self.constexprs = []  # variables: name, where the word stands, end
        self.demoted = []  # those whose value has a mutant: name, where the word stands

    def is_here(self, cursor):
        return cursor.location.file is not None and cursor.location.file.name == str(self.path)

    def find(self):
        for child in self.unit.cursor.get_children():
            if self.is_here(child) and not child.kind.is_preprocessing():
                self.walk(child, False)
        unique = {(m.kind, m.start, m.end): m for m in self.found}
        constants = [m.start for m in self.found if m.kind == "constant"]
        self.demoted = [
            (name, word) for name, word, end in self.constexprs if any(word < c < end for c in constants)
        ]
        return sorted(unique.values(), key=lambda m: (m.start, RANK[m.kind], m.end))

    # Places

    def extent(self, cursor):
        return cursor.extent.start.offset, cursor.extent.end.offset

    def is_written(self, start, end):
        """Whether the text stands in this file as it is, not in a macro."""
        if not 0 <= start < end <= len(self.source):
            return False
        return not any(a < end and start < b for a, b in self.macros if not (start <= a and b <= end))

    def note(self, kind, start, end, **more):
        if not self.is_written(start, end):
            return
        text = b" ".join(self.source[start:end].split()).decode()
        line = self.source.count(b"\n", 0, start) + 1
        self.found.append(Mutant(kind, start, end, line, text[:120], **more))

    def statement_end(self, end):
        match = re.compile(rb"\s*;").match(self.source, end)
        return match.end() if match else None

    # The walk

    def walk(self, cursor, compiled):
        kind = cursor.kind
        compiled = compiled or kind in COMPILED or self.is_read_by_compiler(cursor)
        self.constexpr_variable(cursor)
        children = list(cursor.get_children())
        if kind == CursorKind.COMPOUND_STMT:
            self.statements(children)
        elif kind in CONDITIONAL:
            self.condition(cursor, children)
        if kind in (CursorKind.IF_STMT, CursorKind.WHILE_STMT, CursorKind.FOR_STMT,
                    CursorKind.CXX_FOR_RANGE_STMT, CursorKind.DO_STMT):
            self.bodies(cursor, children)
        self.relation(cursor, children)
        self.logic(cursor, children)
        if not compiled:
            self.literal(cursor)
        for child in children:
            self.walk(child, compiled)

    def is_read_by_compiler(self, cursor):
        """A member's initialiser that has to be a constant expression, or the size of an array."""
        in_class = cursor.semantic_parent is not None and cursor.semantic_parent.kind in (
            CursorKind.CLASS_DECL, CursorKind.STRUCT_DECL)
        if cursor.kind == CursorKind.VAR_DECL and in_class:
            return True
        return cursor.kind == CursorKind.FIELD_DECL and cursor.type.kind == TypeKind.CONSTANTARRAY

    def constexpr_variable(self, cursor):
        """Notes where a variable's `constexpr` stands: it must give way to its value's mutants."""
        if cursor.kind != CursorKind.VAR_DECL or self.is_read_by_compiler(cursor):
            return
        start, end = self.extent(cursor)
        head = self.source[start:end].split(b"=")[0].split(b"{")[0]
        at = re.search(rb"\bconstexpr\b", head)
        if at and self.is_written(start + at.start(), start + at.end()):
            self.constexprs.append((cursor.spelling, start + at.start(), end))

    def statements(self, children):
        run = []
        for child in children:
            self.statement(child)
            extent = self.call_extent(child)
            if extent:
                run.append(extent)
            else:
                self.swaps(run)
                run = []
        self.swaps(run)

    def statement(self, cursor):
        start, end = self.extent(cursor)
        after = self.statement_end(end)
        if after is None:
            return
        if cursor.kind.is_expression():
            self.note("drop", start, after, prefix="{{ if (zmutant::keep({n})) ", suffix=" }}")
        elif cursor.kind in JUMPS or self.source[start:end] == b"return":
            self.note("drop", start, after, prefix="{{ if (zmutant::keep({n})) ", suffix=" }}")
        elif cursor.kind == CursorKind.RETURN_STMT:
            value = next(iter(cursor.get_children()), None)
            if value is not None and value.type.kind == TypeKind.VOID:
                prefix = "{{ if (!zmutant::keep({n})) return; "
                self.note("drop", start, after, prefix=prefix, suffix=" }}")

    def call_extent(self, cursor):
        """Of a statement that is a call."""
        inner = cursor
        while inner.kind == CursorKind.UNEXPOSED_EXPR:
            below = list(inner.get_children())
            if len(below) != 1:
                break
            inner = below[0]
        if inner.kind != CursorKind.CALL_EXPR:
            return None
        start, end = self.extent(cursor)
        after = self.statement_end(end)
        if inner.spelling.startswith("operator") and not inner.spelling.startswith("operator()"):
            self.assignments.add(start)
        return (start, after) if after and self.is_written(start, end) else None

    def swaps(self, run):
        for i in range(len(run) - 1):
            assigns = run[i][0] in self.assignments or run[i + 1][0] in self.assignments
            self.note("swap", run[i][0], run[i + 1][1], run=list(run), assigns=assigns)

    def bodies(self, cursor, children):
        for child in children:
            if child.kind != CursorKind.COMPOUND_STMT and self.follows_head(cursor, child):
                self.statement(child)

    def follows_head(self, cursor, child):
        """Whether a child is a body, not a condition or a part of a loop's head."""
        head = self.source[cursor.extent.start.offset : child.extent.start.offset].rstrip()
        if head.endswith((b"else", b"do")):
            return True
        return head.endswith(b")") and head.count(b"(") == head.count(b")")

    def condition(self, cursor, children):
        if cursor.kind == CursorKind.DO_STMT:
            return self.negate(children[-1])
        if cursor.kind == CursorKind.FOR_STMT:
            return self.for_condition(cursor, children)
        if cursor.kind == CursorKind.CONDITIONAL_OPERATOR:
            return self.negate(children[0])
        variables = [c for c in children if c.kind == CursorKind.VAR_DECL]
        if variables:
            start, end = self.extent(variables[0])
            name = variables[0].spelling
            if cursor.kind == CursorKind.IF_STMT:
                self.note("negate", start, end, suffix=f"; zmutant::negate({{n}}, {name})")
            return None
        heads = [c for c in children if c.kind.is_expression() and not self.follows_head(cursor, c)]
        is_constexpr = re.match(rb"if\s+constexpr", self.source[cursor.extent.start.offset :])
        if heads and not is_constexpr:
            self.negate(heads[0])
        return None

    def for_condition(self, cursor, children):
        start = cursor.extent.start.offset
        head = self.source.find(b";", start)
        between = [c for c in children if c.extent.start.offset > head and c.kind.is_expression()]
        if between and self.statement_end(between[0].extent.end.offset):
            self.negate(between[0])

    def negate(self, cursor):
        if self.operands(cursor, list(cursor.get_children()))[0] not in (b"&&", b"||"):
            start, end = self.extent(cursor)
            self.note("negate", start, end, prefix="zmutant::negate({n}, ", suffix=")")

    def operands(self, cursor, children):
        """The operator between two children, and where it stands."""
        while cursor.kind in (CursorKind.UNEXPOSED_EXPR, CursorKind.PAREN_EXPR) and len(children) == 1:
            cursor = children[0]
            children = list(cursor.get_children())
        if cursor.kind not in (CursorKind.BINARY_OPERATOR, CursorKind.CALL_EXPR) or len(children) < 2:
            return None, None, children
        left, right = children[0].extent.end.offset, children[-1].extent.start.offset
        if left >= right:
            return None, None, children
        text = self.source[left:right]
        operator = text.strip()
        at = left + text.find(operator)
        return operator, (at, at + len(operator)), children

    def relation(self, cursor, children):
        if cursor.kind not in (CursorKind.BINARY_OPERATOR, CursorKind.CALL_EXPR):
            return
        operator, at, _ = self.operands(cursor, children)
        if operator in RELATIONS:
            start, end = self.extent(cursor)
            prefix = f"zmutant::{RELATIONS[operator]}({{n}}, "
            self.note("boundary", start, end, prefix=prefix, suffix=")", comma=at)

    def logic(self, cursor, children):
        if cursor.kind != CursorKind.BINARY_OPERATOR:
            return
        operator, _, _ = self.operands(cursor, children)
        if operator in (b"&&", b"||"):
            for child in children:
                self.negate(child)

    def literal(self, cursor):
        start, end = self.extent(cursor)
        text = self.source[start:end]
        if cursor.kind == CursorKind.CXX_BOOL_LITERAL_EXPR:
            fits = text in (b"true", b"false")
        elif cursor.kind in (CursorKind.INTEGER_LITERAL, CursorKind.FLOATING_LITERAL):
            fits = NUMBER.match(text)
        else:
            fits = False
        if fits:
            self.note("constant", start, end, prefix="zmutant::constant({n}, ", suffix=")")
