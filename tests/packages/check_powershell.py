#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Looks a PowerShell script over, as far as that goes without PowerShell: that every string, comment and bracket is
closed, every variable that is read is given a value somewhere, every command is a function of the script or among
those that are known here, with the parameters that it has, and no short form is used.

    check_powershell.py SCRIPT
"""
import re
import sys

# What the script may use of Windows PowerShell 5.1, with the parameters that it uses.
CMDLETS = {
    "new-object": {"typename", "argumentlist"},
    "set-strictmode": {"version"},
    "write-warning": {"message"},
    "write-output": {"inputobject"},
    "join-path": {"path", "childpath"},
    "sort-object": set(),
}
VERBS = {"add", "get", "open", "read", "remove"}
AUTOMATIC = {"null", "true", "false", "matches", "pscmdlet", "psscriptroot", "lastexitcode", "erroractionpreference", "_"}
OPERATORS = {"eq", "ne", "gt", "match", "notmatch", "contains", "notcontains", "split", "join", "and", "or", "not"}
CLOSING = {"(": ")", "{": "}", "[": "]"}


def tokens_of(text):
    """The script without comments, in pairs of kind and text; strings are whole."""
    pattern = re.compile(
        r"(?P<comment><#.*?#>|#[^\n]*)|(?P<single>'(?:[^']|'')*')|(?P<double>\"(?:[^\"`]|`.|\"\")*\")"
        r"|(?P<variable>\$(?:env:\w+|\w+|\{\w+\}))|(?P<word>[A-Za-z]\w*(?:-[A-Za-z]\w*)?)|(?P<option>-[A-Za-z]\w*)"
        r"|(?P<bracket>[(){}\[\]])|(?P<space>\s+)|(?P<other>.)", re.DOTALL)
    for match in pattern.finditer(text):
        if match.lastgroup not in ("comment", "space"):
            yield match.lastgroup, match.group(), text.count("\n", 0, match.start()) + 1


def findings(text):
    tokens = list(tokens_of(text))
    # Variables and expressions within texts are read like those outside.
    inner = [(kind, piece, line) for outer, whole, line in tokens if outer == "double"
             for kind, piece, _ in tokens_of(whole[1:-1])]
    yield from unclosed(tokens)
    yield from unclosed([token for token in inner if token[0] == "bracket"])
    functions = {tokens[i + 1][1].lower() for i, token in enumerate(tokens[:-1]) if token[1] == "function"}
    for name in functions:
        if name.split("-")[0] not in VERBS:
            yield f"function {name}: not an approved verb that is known here"
    yield from unknown_variables(tokens, inner)
    parameters = parameters_of(tokens)
    known = {**CMDLETS, **{name: parameters.get(name, set()) for name in functions}}
    yield from unknown_commands(tokens, known)
    for kind, piece, line in tokens:
        if kind == "other" and piece in "'\"":
            yield f"line {line}: a text is not closed"
        if kind == "other" and piece in "%?`":
            yield f"line {line}: the short form {piece}"


def unclosed(tokens):
    open_brackets = []
    for kind, piece, line in tokens:
        if kind != "bracket":
            continue
        if piece in CLOSING:
            open_brackets.append((piece, line))
        elif not open_brackets or CLOSING[open_brackets.pop()[0]] != piece:
            yield f"line {line}: {piece} closes nothing"
            return
    for piece, line in open_brackets:
        yield f"line {line}: {piece} is not closed"


def unknown_variables(tokens, inner):
    given = set(AUTOMATIC)
    depth_of_param = None
    depth = 0
    for i, (kind, piece, _) in enumerate(tokens):
        if kind == "bracket":
            depth += 1 if piece in CLOSING else -1
            if depth_of_param is not None and depth <= depth_of_param:
                depth_of_param = None
        if piece == "param":
            depth_of_param = depth
        if kind != "variable":
            continue
        following = [token[1] for token in tokens[i + 1:i + 3]]
        is_given = following[:1] == ["="] and following[1:] != ["="] or following == ["+", "="] or following[:1] == ["in"]
        # $one, $other = ...
        is_given = is_given or following[:1] == [","] and tokens[i + 2][0] == "variable" and tokens[i + 3][1] == "="
        if is_given or depth_of_param is not None:
            given.add(piece.strip("${}").lower())
    for kind, piece, line in [*tokens, *inner]:
        name = piece.strip("${}").lower()
        if kind == "variable" and not name.startswith("env:") and name not in given:
            yield f"line {line}: {piece} is never given a value"


def parameters_of(tokens):
    """The parameters of each function."""
    found = {}
    for i, token in enumerate(tokens):
        if token[1] != "function":
            continue
        name = tokens[i + 1][1].lower()
        at = next((j for j in range(i, len(tokens)) if tokens[j][1] == "param"), None)
        found[name] = set()
        depth = 0
        for kind, piece, _ in tokens[at + 1:]:
            depth += (piece in ("(", "[", "{")) - (piece in (")", "]", "}"))
            if kind == "variable":
                found[name].add(piece[1:].lower())
            if depth == 0:
                break
    return found


def unknown_commands(tokens, known):
    command = None
    for i, (kind, piece, line) in enumerate(tokens):
        previous = tokens[i - 1][1] if i else ""
        if kind == "word" and "-" in piece and previous not in ("function", "."):
            command = piece.lower()
            if command not in known:
                yield f"line {line}: {piece} is no command that is known here"
        elif kind == "option" and piece[1:].lower() not in OPERATORS:
            if command is None or piece[1:].lower() not in known.get(command, set()):
                yield f"line {line}: {command} has no {piece}"


def main():
    with open(sys.argv[1], encoding="ascii") as script:
        found = list(findings(script.read()))
    print("\n".join(found))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
