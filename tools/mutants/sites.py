"""Finds the places of a C++ source that can be changed, with clang, and writes the source with all chosen changes.

A change is a Site. In the written text each site is an expression or a statement that calls `mutant::on(NUMBER)` at run time, so
one build contains every mutant. Sites are nested or separate; they never overlap partly. Ranges count bytes.
"""
import dataclasses
import re

import clang.cindex
from clang.cindex import CursorKind as Kind
from clang.cindex import TypeKind as Type

ON = "::mutant::on(%d)"
COMPARISONS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==", "&&": "||", "||": "&&"}
LITERALS = (Kind.INTEGER_LITERAL, Kind.FLOATING_LITERAL, Kind.CHARACTER_LITERAL, Kind.CXX_BOOL_LITERAL_EXPR, Kind.STRING_LITERAL)
MOVABLE = (Kind.IF_STMT, Kind.FOR_STMT, Kind.WHILE_STMT, Kind.CXX_FOR_RANGE_STMT)
FUNCTIONS = (Kind.FUNCTION_DECL, Kind.FUNCTION_TEMPLATE, Kind.CXX_METHOD, Kind.CONSTRUCTOR, Kind.DESTRUCTOR,
             Kind.CONVERSION_FUNCTION)
VARIABLES = (Kind.VAR_DECL, Kind.FIELD_DECL, Kind.PARM_DECL)
UNTOUCHED = (Kind.ENUM_DECL, Kind.STATIC_ASSERT, Kind.TEMPLATE_NON_TYPE_PARAMETER, Kind.TEMPLATE_TYPE_PARAMETER)
NAMES = (Kind.DECL_REF_EXPR, Kind.MEMBER_REF_EXPR, Kind.TYPE_REF, Kind.TEMPLATE_REF)
# Literals and calls in these macros cannot be changed: clang reports the range of the whole expansion for them.
MACRO = re.compile(rb"\b(QStringLiteral|assert|Q_[A-Z_]+|[A-Z][A-Z0-9]*_[A-Z0-9_]+)\b(\s*\()?")
STRING = re.compile(rb'(u8|u|U|L)?"([^"\\])')
QT_STRING = re.compile(rb'QStringLiteral\s*\(\s*"([^"\\])')
# If two changes have the same range, the kind that comes first here is the outer one.
ORDER = ("exchange", "drop", "negate", "compare", "constant")


@dataclasses.dataclass
class Site:
    """A place and its change. `template` is the new text: {on} is the call of the switch, {0} and {1} are the parts."""
    path: str
    kind: str
    start: int
    end: int
    parts: list
    template: str
    line: int
    change: str  # a description; together with the path it identifies the mutant in later versions of the file
    number: int = 0

    @property
    def key(self):
        return self.path, self.change


class Finder:
    """Walks the syntax tree of one source and collects its sites."""

    def __init__(self, path, text):
        self.path, self.text, self.sites, self.live = path, text, {}, []
        self.macros = [self.macro_range(match) for match in MACRO.finditer(text)]

    def macro_range(self, match):
        """The range from a macro's name to the parenthesis that closes its arguments."""
        end, depth = match.end(), 1 if match[2] else 0
        while depth and end < len(self.text):
            depth += {b"(": 1, b")": -1}.get(self.text[end:end + 1], 0)
            end += 1
        return match.start(), end

    def in_macro(self, start, end):
        return any(start < stop and first < end and not (start <= first and stop <= end and end - start > stop - first)
                   for first, stop in self.macros)

    def plain(self, start, end, limit=70):
        text = " ".join(self.text[start:end].decode("utf-8", "replace").split())
        return text if len(text) <= limit else text[:limit - 3] + "..."

    def add(self, kind, start, end, parts, template, change):
        line = self.text.count(b"\n", 0, start) + 1
        if kind == "constant":
            begin = self.text.rfind(b"\n", 0, start) + 1
            change += " in " + self.plain(begin, begin + len(self.text[begin:].split(b"\n", 1)[0]))
        site = Site(self.path, kind, start, end, parts, template, line, change)
        self.sites.setdefault((start, end, kind), site)

    def is_constexpr_if(self, node):
        return node.kind == Kind.IF_STMT and re.match(rb"if\s+constexpr\b", self.text[node.extent.start.offset:]) is not None

    def statement_range(self, node):
        """The range of a statement with its semicolon; None if the statement cannot be moved."""
        start, end = span(node)
        after = re.compile(rb"\s*;").match(self.text, end)
        if after:
            return start, after.end()
        return (start, end) if self.text[end - 1:end] in (b";", b"}") else None

    def walk(self, node, parent=None):
        kind = node.kind
        start, end = span(node)
        if kind in UNTOUCHED or start == end:
            return
        if kind in FUNCTIONS or kind == Kind.VAR_DECL:
            if re.search(rb"\b(constexpr|consteval|constinit)\b", self.text[start:end].split(b"{")[0].split(b"=")[0]):
                return
            if kind in FUNCTIONS and node.is_definition():
                self.live.append((start, end))
        if self.in_macro(start, end):
            return
        children = [child for child in node.get_children() if span(child)[1] > span(child)[0]]
        if node.kind.is_expression():
            self.literal(node, parent)
            self.comparison(node, children)
        self.condition(node, children)
        self.statements(node, children)
        if kind == Kind.CASE_STMT or self.is_constexpr_if(node):
            children = children[1:]
        for child in children:
            # Nodes before a variable's name belong to its type, such as template arguments. They are not values.
            if kind not in VARIABLES or span(child)[0] > node.location.offset:
                self.walk(child, node)

    def literal(self, node, parent):
        start, end = span(node)
        text = self.text[start:end]
        if node.kind in LITERALS:
            is_length = parent is not None and parent.kind in VARIABLES and self.text[:start].rstrip().endswith(b"[")
            if is_length or parent is not None and parent.kind in NAMES:
                return
            self.constant(node.kind, start, end, text)
        elif node.kind == Kind.DECL_REF_EXPR and re.fullmatch(rb"(\w+::)*k[A-Z]\w*", text) and is_integer(node.type):
            self.constant(Kind.INTEGER_LITERAL, start, end, text)

    def constant(self, kind, start, end, text):
        word = text.decode("utf-8", "replace")
        safe = word.replace("{", "{{").replace("}", "}}")
        if kind == Kind.CXX_BOOL_LITERAL_EXPR:
            self.add("constant", start, end, [], "({on} != %s)" % word, "%s becomes %s" % (word, "false" if word == "true" else "true"))
        elif kind == Kind.STRING_LITERAL:
            match = STRING.match(text)
            if match:
                self.text_constant(start, end, match.start(2), text)
        else:
            template = "({on} ? static_cast<decltype(%s)>(%s + 1) : %s)" % (safe, safe, safe)
            self.add("constant", start, end, [], template, "%s becomes %s + 1" % (word, word))

    def text_constant(self, start, end, at, text):
        """Changes the first character, so that length and type stay the same."""
        other = b"Y" if text[at:at + 1] == b"X" else b"X"
        if text[at] >= 0x80:
            return
        changed = text[:at] + other + text[at + 1:]
        both = [part.decode("utf-8", "replace").replace("{", "{{").replace("}", "}}") for part in (changed, text)]
        self.add("constant", start, end, [], "({on} ? %s : %s)" % tuple(both),
                 "%s begins with %s" % (self.plain(start, end), other.decode()))

    def comparison(self, node, children):
        """Changes a comparison of any type: two operands with the operator between them."""
        if node.kind not in (Kind.BINARY_OPERATOR, Kind.CALL_EXPR, Kind.UNEXPOSED_EXPR) or len(children) < 2:
            return
        first, last = min(children, key=lambda c: span(c)[0]), max(children, key=lambda c: span(c)[1])
        (start, middle), (rest, end) = span(first), span(last)
        operator = self.text[middle:rest].decode("utf-8", "replace").strip()
        if (start, end) == span(node) and operator in COMPARISONS:
            other = COMPARISONS[operator]
            template = "({on} ? ({0}) %s ({1}) : ({0}) %s ({1}))" % (other, operator)
            self.add("compare", start, end, [(start, middle), (rest, end)], template,
                     "%s becomes %s in %s" % (operator, other, self.plain(start, end)))

    def condition(self, node, children):
        if node.kind not in (Kind.IF_STMT, Kind.WHILE_STMT, Kind.FOR_STMT, Kind.DO_STMT, Kind.CONDITIONAL_OPERATOR):
            return
        if any(child.kind == Kind.VAR_DECL for child in children):
            return
        if self.is_constexpr_if(node):
            return
        expressions = [child for child in children if child.kind.is_expression()]
        if node.kind == Kind.FOR_STMT:
            expressions = [e for e in expressions[:2] if e.type.get_canonical().kind == Type.BOOL and e != children[-1]]
        if node.kind == Kind.DO_STMT:
            expressions = expressions[-1:]
        if not expressions:
            return
        start, end = span(expressions[0])
        # Changing "==" to "!=" makes the same mutant.
        if not self.is_equality(expressions[0]):
            self.add("negate", start, end, [(start, end)], "({on} != static_cast<bool>({0}))", "negated: %s" % self.plain(start, end))

    def is_equality(self, node):
        finder = Finder(self.path, self.text)
        node = bare(node)
        finder.comparison(node, [child for child in node.get_children() if span(child)[1] > span(child)[0]])
        return any(re.match("[!=]= becomes", site.change) for site in finder.sites.values())

    def statements(self, node, children):
        bodies = {Kind.COMPOUND_STMT: children, Kind.FOR_STMT: children[-1:], Kind.WHILE_STMT: children[-1:],
                  Kind.CXX_FOR_RANGE_STMT: children[-1:], Kind.DO_STMT: children[:1], Kind.IF_STMT: children[1:],
                  Kind.CASE_STMT: children[1:], Kind.DEFAULT_STMT: children}.get(node.kind, [])
        for child in bodies:
            start, end = span(child)
            if is_action(bare(child)) and not self.in_macro(start, end) and self.statement_range(child):
                self.add("drop", start, end, [(start, end)], "static_cast<void>({on} || (static_cast<void>({0}), false))",
                         "dropped: %s" % self.plain(start, end))
        if node.kind == Kind.COMPOUND_STMT:
            for one, two in zip(children, children[1:]):
                self.exchange(one, two)

    def exchange(self, one, two):
        if not all(s.kind in MOVABLE or is_action(bare(s)) for s in (one, two)):
            return
        first, second = self.statement_range(one), self.statement_range(two)
        if first and second and first[1] <= second[0] and self.text[slice(*first)] != self.text[slice(*second)]:
            self.add("exchange", first[0], second[1], [first, second], "if ({on}) {{ {1} {0} }} else {{ {0} {1} }}",
                     "exchanged: %s / %s" % (self.plain(*first, 50), self.plain(*second, 50)))

    def qt_strings(self):
        for match in QT_STRING.finditer(self.text):
            start, end = self.macro_range(MACRO.match(self.text, match.start()))
            if any(first < start < last for first, last in self.live):
                self.text_constant(start, end, match.start(1) - start, self.text[start:end])


def span(node):
    return node.extent.start.offset, node.extent.end.offset


def bare(node):
    """The node without implicit layers, which the source text does not show."""
    while node.kind == Kind.UNEXPOSED_EXPR:
        children = list(node.get_children())
        if len(children) != 1 or span(children[0]) != span(node):
            break
        node = children[0]
    return node


def is_action(node):
    """True for a call or an assignment."""
    if node.kind in (Kind.CALL_EXPR, Kind.COMPOUND_ASSIGNMENT_OPERATOR, Kind.UNARY_OPERATOR):
        return True
    return node.kind == Kind.BINARY_OPERATOR


def is_integer(kind):
    kind = kind.get_canonical().kind
    return Type.CHAR_U.value <= kind.value <= Type.LONGDOUBLE.value


def find_sites(path, name, text, arguments):
    """All sites of a source. `name` is the file that the compiler arguments are for, `text` its bytes."""
    index = clang.cindex.Index.create()
    unit = index.parse(name, args=arguments, unsaved_files=[(name, text.decode("utf-8"))])
    finder = Finder(path, text)
    for node in unit.cursor.get_children():
        if node.location.file and node.location.file.name == name:
            walk_declarations(finder, node)
    finder.qt_strings()
    found = sorted(finder.sites.values(), key=lambda s: (s.start, -s.end, ORDER.index(s.kind)))
    seen = {}
    for site in found:
        seen[site.change] = seen.get(site.change, 0) + 1
        if seen[site.change] > 1:
            site.change += " (%d)" % seen[site.change]
    return found


def walk_declarations(finder, node):
    if node.kind in (Kind.NAMESPACE, Kind.CLASS_DECL, Kind.STRUCT_DECL, Kind.LINKAGE_SPEC, Kind.UNEXPOSED_DECL):
        for child in node.get_children():
            walk_declarations(finder, child)
    else:
        finder.walk(node)


def fits(site, chosen):
    """True if the site is separate from each chosen one, inside one part of it, or around it."""
    for other in chosen:
        inner, outer = sorted((site, other), key=lambda s: (s.end - s.start, -ORDER.index(s.kind)))
        if inner.end <= outer.start or outer.end <= inner.start:
            continue
        if not any(first <= inner.start and inner.end <= last for first, last in outer.parts):
            return False
    return True


def pick(sites, count, random):
    """Picks up to `count` sites, each time of a random kind, so that the many constants do not crowd out the few exchanges."""
    kinds = {}
    for site in random.sample(sites, len(sites)):
        kinds.setdefault(site.kind, []).append(site)
    chosen = []
    while kinds and len(chosen) < count:
        kind = random.choice(sorted(kinds))
        site = kinds[kind].pop()
        if not kinds[kind]:
            del kinds[kind]
        if fits(site, chosen):
            chosen.append(site)
    return chosen


def written(text, chosen, header):
    """The source with the chosen sites as switches, after a line that includes `header`."""
    chosen = sorted(chosen, key=lambda s: (s.start, -s.end, ORDER.index(s.kind)))

    def render(start, end, inside):
        out, at = [], start
        while inside:
            site, *rest = inside
            nested = [s for s in rest if s.start < site.end]
            inside = rest[len(nested):]
            parts = [render(a, b, [s for s in nested if a <= s.start and s.end <= b]) for a, b in site.parts]
            out += [text[at:site.start].decode(), site.template.format(*parts, on=ON % site.number)]
            at = site.end
        return "".join(out) + text[at:end].decode()

    return ('#include "%s"\n' % header + render(0, len(text), chosen)).encode()
