"""The small changes: what each operator puts in the place of what stands in a C++ source."""

import re

# What only moves pixels or names things for a debugger: no rule hangs on it.
COSMETIC = re.compile(
    r"\b(setSpacing|setContentsMargins|setMargin|addStretch|setStretch|addSpacing|setMinimum(Width|Height)|resize|"
    r"setMaximum(Width|Height)|setFixed(Width|Height)|setHorizontalSpacing|setVerticalSpacing|setIconSize|"
    r"setPointSizeF|setWeight|setColumnStretch|setRowStretch|setRowMinimumHeight|setSizePolicy|setAlignment|"
    r"setForegroundRole|setFont|setColorAt|QColor|reserve|Reserve|Prefetch\w*|static_assert)\b|^\s*(constexpr|#)")


def code_only(text):
    """The text with comments, strings and preprocessor lines blanked out, every place kept."""
    pattern = re.compile(
        r'R"(?P<tag>[^()\s\\]{0,16})\(.*?\)(?P=tag)"|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])\'|//[^\n]*|/\*.*?\*/|'
        r'^[ \t]*#(?:[^\n\\]|\\.|\\\n)*',
        re.S | re.M)
    return pattern.sub(lambda found: re.sub(r"[^\n]", " ", found.group()), text)


def closing_bracket(code, opening):
    """Where the round bracket that opens at `opening` closes; -1 when it does not."""
    depth = 0
    for place in range(opening, len(code)):
        depth += {"(": 1, ")": -1}.get(code[place], 0)
        if depth == 0:
            return place
    return -1


# --- Operators: each takes code_only() and gives (start, end, replacement) for every place where it can work ---

COMPARISONS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "=="}


def comparison(code):
    # The formatter sets blanks around comparisons and none around the angle brackets of templates.
    for found in re.finditer(r"(?<= )(<=|>=|==|!=|<|>)(?= )", code):
        yield found.start(), found.end(), COMPARISONS[found.group()]


def off_by_one(code):
    for found in re.finditer(r" ([+-]) 1\b(?!\.)", code):
        yield found.start(), found.end(), f" {found.group(1)} 0"
    for found in re.finditer(r"(\+\+|--)(?=\w)|(?<=\w)(\+\+|--)", code):
        yield found.start(), found.end(), "--" if found.group() == "++" else "++"


def dropped_statement(code):
    call = r"(?:\w+(?:::|\.|->))*\w+\((?:[^;{}]*)\)"
    assignment = r"(?:\w+(?:\.|->))*\w+(?:\[[^\]]*\])? [-+|&*/]?= [^;{}]+"
    for found in re.finditer(rf"^([ \t]+)((?:{call}|{assignment});)$", code, re.M):
        words = found.group(2)
        if re.match(r"(return|throw|case|using|delete|else|co_|static_assert)\b", words):
            continue
        yield found.start(2), found.end(2), ";"


def swapped_constant(code):
    for found in re.finditer(r"(?<![\w.\"'])(\d+)(?![\w.'])", code):
        before = code[:found.start()].rstrip()[-2:]
        # " + 1" is another operator's.
        if found.group() == "1" and before[-1:] in "+-":
            continue
        value = int(found.group())
        yield found.start(), found.end(), "1" if value == 0 else "0" if value == 1 else str(value + 1)
    for found in re.finditer(r"\b(true|false)\b", code):
        yield found.start(), found.end(), "false" if found.group() == "true" else "true"
    for found in re.finditer(r" (&&|\|\|) ", code):
        yield found.start(1), found.end(1), "||" if found.group(1) == "&&" else "&&"


def negated_condition(code):
    for found in re.finditer(r"\bif \(", code):
        opening = found.end() - 1
        closing = closing_bracket(code, opening)
        if closing < 0:
            continue
        start = opening + 1
        # What stands before the last semicolon of a condition prepares it.
        condition_start = code.rfind(";", start, closing) + 1 or start
        condition = code[condition_start:closing].strip()
        lead = "" if condition_start == start else " "
        declared = re.match(r"(?:const )?[\w:<>]+(?: const)?[ *&]+(?:const )?(\w+) = ", condition)
        yield condition_start, closing, (lead, declared.group(1) if declared else None)


OPERATORS = (comparison, off_by_one, dropped_statement, swapped_constant, negated_condition)


def replacement_of(change, text):
    """The words of a negated condition need the condition itself, strings and all; other operators bring theirs."""
    start, end, replacement = change
    if isinstance(replacement, str):
        return replacement
    lead, declared = replacement
    condition = text[start:end].strip()
    return f"{lead}{condition}; !{declared}" if declared else f"{lead}!({condition})"
