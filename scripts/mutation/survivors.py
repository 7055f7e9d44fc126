"""The list of mutants that no test notices, with the reason for each."""

import re

LINE = re.compile(r"^(?P<file>[^:]+):(?P<line>\d+): (?P<what>.*)$")
REASON = "    because "
UNKNOWN = "?"


def update_survivors(path, mutants, fates):
    """Brings the list up to date. `fates` are pairs of a mutant and whether it has survived. Answers with the survivors
    that have no reason."""
    reasons = read_reasons(path, mutants)
    for mutant, survived in fates:
        if survived:
            reasons.setdefault(id(mutant), UNKNOWN)
        else:
            reasons.pop(id(mutant), None)
    survivors = [mutant for mutant in mutants if id(mutant) in reasons]
    path.write_text("".join(f"{mutant}\n{REASON}{reasons[id(mutant)]}\n" for mutant in survivors))
    return [str(mutant) for mutant in survivors if reasons[id(mutant)] == UNKNOWN]


def read_reasons(path, mutants):
    """Line numbers change with every edit: an entry stands for the nearest mutant of its words."""
    reasons = {}
    lines = path.read_text().splitlines() if path.exists() else []
    for line, below in zip(lines, [*lines[1:], ""]):
        entry = LINE.match(line)
        candidates = [mutant for mutant in mutants if entry and mutant.file == entry["file"]
                      and str(mutant).endswith(f": {entry['what']}") and id(mutant) not in reasons]
        if candidates:
            nearest = min(candidates, key=lambda mutant: abs(mutant.line - int(entry["line"])))
            reasons[id(nearest)] = below.removeprefix(REASON) if below.startswith(REASON) else UNKNOWN
    return reasons
