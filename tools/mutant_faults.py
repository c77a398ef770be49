"""Finds places in C++ sources where ./run mutants can put a small fault.

This is a light reader of tokens, not a compiler. It relies on the format that clang-format gives the sources: a
comparison has spaces around it, the bracket of a template has none. Some faults therefore do not build, which costs
little. It leaves alone comments, texts, directives, code for Windows, template parameters, static_assert, sizeof and
the default values of members and parameters in classes.
"""
import collections
import itertools
import random
import re

TOKEN = re.compile(r"""(?P<skip>//[^\n]*|/\*.*?\*/|\s+|\#(?:\\\n|[^\n])*)
  |(?P<text>R"(?P<mark>[^(\s]*)\(.*?\)(?P=mark)"
    |(?:u8|[uUL])?"(?:\\.|[^"\\\n])*"|(?:u8|[uUL])?'(?:\\.|[^'\\\n])*')
  |(?P<number>\d(?:[\w.]|'\w)*)|(?P<word>[A-Za-z_]\w*)
  |(?P<sign><=>|\.\.\.|::|->|\+\+|--|&&|\|\||<<=|>>=|[-+*/%&|^=!<>]=|<<|>>|.)""", re.X | re.S)
KEYWORDS = set("""alignas alignof auto break case catch const consteval constexpr continue decltype default
  delete do else enum for friend goto if new noexcept operator requires return sizeof static static_assert
  switch template throw try typedef using while""".split())
SWAPS = {"comparison": {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "=="},
         "arithmetic": {"+": "-", "-": "+", "+=": "-=", "-=": "+="}, "logic": {"&&": "||", "||": "&&"}}
# A statement with its brackets emptied and each name as w: an assignment, a call, a step or a shift.
STATEMENT = re.compile(r"(?:\+\+|--)[\w.:>()\[\]-]+|break|continue|throw.*"
                       r"|\**(?:w|\(\))(?:(?:::|\.|->)w|\(\)|\[\])*"
                       r"(?:(?<=.)\(\)|\+\+|--|(?:\+\+|--)?(?:<<|>>|[-+*/|&^%])?=.*|<<.*|>>.*)")
Fault = collections.namedtuple("Fault", "id file line kind key content is_constant")


def tokens_of(source):
    """[(kind, text, start, end)] without comments, directives and what is for Windows only."""
    tokens, windows = [], []  # for each #if: whether its Windows branch is open, None if it has none
    for match in TOKEN.finditer(source):
        directive = re.match(r"#\s*(if|el|endif)", match.group())
        if directive and directive.group(1) == "if":
            is_windows = not re.search("ifndef|!", match.group())
            windows.append(is_windows if "_WIN32" in match.group() else None)
        elif directive and windows:
            last = windows.pop()
            windows += [] if directive.group(1) == "endif" else [None if last is None else not last]
        elif match.lastgroup != "skip" and True not in windows:
            tokens.append((match.lastgroup, match.group(), match.start(), match.end()))
    return tokens


def scope_of(head, outer):
    """What a brace opens after the words `head`: a function, class, enum, namespace or list of values."""
    if head[:1] and head[0] in ("class", "struct", "union", "enum") or "namespace" in head or "extern" in head[:1]:
        return "enum" if "enum" in head else "namespace" if head[0] not in ("class", "struct", "union") else "class"
    if outer == "function" or outer != "list" and (not head or "(" in head) and head[-1:] != ["="]:
        return "function"
    return "function" if head[-1:] and head[-1] in ")]" else "list"


def faults_of(file, source):
    tokens = tokens_of(source)
    words, close, stack, found = [token[1] for token in tokens] + [";"] * 3, {}, [], []
    for i, word in enumerate(words):
        if word in ("(", "[", "{"):
            stack.append(i)
        elif word in (")", "]", "}") and stack:
            close[stack.pop()] = i
    scopes, brackets, head, skip_to, headers = [("namespace", False)], [], [], 0, set()

    def add(kind, first, last, new):
        start, end = tokens[first][2], tokens[last][3]
        begin, stop = source.rfind("\n", 0, start) + 1, source.find("\n", end)
        before, after, old = (" ".join(text.split()) for text in (
            source[begin:stop], source[begin:start] + new + source[end:stop], source[start:end]))
        line = source.count("\n", 0, start) + 1
        name = f"{file}:{line}:{start - begin + 1} {kind}: {old} -> {' '.join(new.split())}"
        found.append(Fault(name, file, line, kind, f"{file}: {before} => {after}",
                           source[:start] + new + source[end:], scopes[-1][1]))

    for i, (kind, word, start, end) in enumerate(tokens):
        following, previous = words[i + 1], words[i - 1] if i else ";"
        is_call = kind == "word" and following == "("
        if i < skip_to:
            continue
        if word == "template" and following == "<":
            depth = itertools.accumulate({"<": 1, ">": -1, ">>": -2}.get(other, 0) for other in words[i + 1:])
            skip_to = i + 2 + next(j for j, open_ in enumerate(depth) if open_ <= 0)
        elif word == "using":
            skip_to = words.index(";", i)
        elif is_call and word in ("static_assert", "sizeof", "decltype", "alignas", "noexcept", "requires"):
            skip_to = close[i + 1] + 1
        elif word in ("{", "(", "["):
            brackets.append(word)
            if word == "{":
                is_constant = "constexpr" in " ".join(head).replace("if constexpr", "") or "consteval" in head
                scopes.append((scope_of(head, scopes[-1][0]), scopes[-1][1] or is_constant))
                head = []
        elif word in ("}", ")", "]"):
            brackets.pop()
            if word == "}":
                scopes.pop()
                head = []
        if word in (";", "{", "}") or word == ":" and previous in ("public", "private", "protected"):
            head = []
            continue
        head += [word] if skip_to <= i else []
        scope = scopes[-1][0]
        is_first = brackets[-1:] == ["{"] and (previous in (";", "{", "}", "else") or i - 1 in headers)
        if skip_to > i or scope == "class" and "constexpr" not in head:
            continue
        is_spaced = source[start - 1].isspace() and source[end].isspace() and previous != "operator"
        is_joined = word in ("+", "+=") and ("text" in (tokens[i - 1][0], tokens[i + 1][0]))
        for swap, signs in SWAPS.items():
            if is_spaced and word in signs and not is_joined:
                add(swap, i, i, signs[word])
        if word in ("true", "false"):
            add("boolean", i, i, "false" if word == "true" else "true")
        number = re.fullmatch(r"(?i)(0x[\da-f']+|\d[\d']*)(u?l*|\.\d+f?)", word)
        if number and previous != "operator":
            is_hex = word[:2] in ("0x", "0X")
            value = int(number.group(1).replace("'", ""), 16 if is_hex else 10)
            value += -1 if value > 0 and (start - source.rfind("\n", 0, start)) % 2 else 1
            add("constant", i, i, (hex(value) if is_hex else str(value)) + number.group(2))
        if scope != "function":
            continue
        if is_call and word in ("if", "while", "for"):
            inner = source[tokens[i + 1][3]:tokens[close[i + 1]][2]]
            headers.add(close[i + 1])
            if word != "for" and ";" not in inner and " = " not in inner:
                add("negation", i + 1, close[i + 1], f"(!({inner}))")
        if word == "return" and following not in (";", "{", "*", "0", "nullptr", "true", "false"):
            stop = i + 1
            while words[stop] != ";":
                stop = close.get(stop, stop) + 1
            if stop > i + 2 or following.isdigit():
                add("return", i + 1, stop - 1, "{}")
        if is_call and word not in KEYWORDS and close[i + 1] > i + 2:
            commas, j, angle = [i + 1], i + 2, 0
            while j < close[i + 1]:
                bracket = not source[tokens[j][2] - 1].isspace() and {"<": 1, ">": -1, ">>": -2}.get(words[j], 0)
                angle += bracket or 0
                commas += [j] if words[j] == "," and angle <= 0 else []
                j = close.get(j, j) + 1
            for a, b, c in list(zip(commas, commas[1:], commas[2:] + [close[i + 1]]))[:2]:
                one, two = source[tokens[a + 1][2]:tokens[b - 1][3]], source[tokens[b + 1][2]:tokens[c - 1][3]]
                if one != two and "{" not in one + two:
                    add("arguments", a + 1, c - 1, f"{two}, {one}")
        if is_first and (word not in KEYWORDS or word in ("break", "continue", "throw")):
            shape, j = "", i
            while words[j] not in (";", "}", ":"):
                shape += words[j] if tokens[j][0] == "sign" or words[j] in KEYWORDS else "w"
                j = close.get(j, j)
                shape += words[j] if words[j] in (")", "]", "}") else ""
                j += 1
            if words[j] == ";" and STATEMENT.fullmatch(shape):
                add("statement", i, j - 1, "")
    return found


def drawn(faults, seed):
    """Yields all faults in turn by room. A longer campaign begins with the faults of a shorter one."""
    rooms, generator = collections.defaultdict(list), random.Random(seed)
    for fault in faults:
        room = re.match(r"include|platform/xml|platform|.*(?=/)", fault.file)
        rooms[room.group()].append(fault)
    while any(rooms.values()):
        for _, room in sorted(rooms.items()):
            if room:
                name = generator.choice(room).file
                file = [fault for fault in room if fault.file == name]
                kind = generator.choice(sorted({fault.kind for fault in file}))
                fault = generator.choice([fault for fault in file if fault.kind == kind])
                room.remove(fault)
                yield fault
