"""Makes the tables of docs/ from what the suites over window managers and over desktops leave behind."""

import pathlib
import sys
import xml.etree.ElementTree as xml

BEGIN, END = "<!-- table: begin -->", "<!-- table: end -->"


def read(file):
    """All properties of a combination's tests; a case that ran more than once keeps its worst result."""
    found = {}
    for entry in xml.parse(file).getroot().iter("property"):
        name, value = entry.get("name"), entry.get("value")
        if name not in found or found[name] == "works":
            found[name] = value
    return found


def cell(results, cases, footnotes):
    """What a column says about its cases."""
    outcomes = [(case, results.get("case " + case, "")) for case in cases]
    failing = [case for case, outcome in outcomes if outcome == "fails"]
    if failing:
        return "**fails**: " + ", ".join(failing)
    reasons = [outcome.split(": ", 1)[1] for _, outcome in outcomes if outcome.startswith("impossible: ")]
    numbers = [str(footnotes.setdefault(reason, len(footnotes) + 1)) for reason in dict.fromkeys(reasons)]
    note = "<sup>" + ", ".join(numbers) + "</sup>" if numbers else ""
    if all(not outcome for _, outcome in outcomes):
        return "-"
    works = any(outcome == "works" for _, outcome in outcomes)
    return ("works" if works else "impossible") + note


def results_below(folder, columns):
    """Each combination's name and properties; ends the program where a case has no column."""
    known = {"case " + case for cases in columns.values() for case in cases}
    for file in sorted(pathlib.Path(folder).glob("*/result.xml")):
        results = read(file)
        unknown = [name for name in results if name.startswith("case ") and name not in known]
        if unknown:
            sys.exit(f"{file}: no column for {', '.join(unknown)}")
        yield file.parent.name, results


def table(head, rows, footnotes):
    """The lines of a table and its footnotes."""
    lines = ["| " + " | ".join(head) + " |", "|---" * len(head) + "|"]
    lines += ["| " + " | ".join(row) + " |" for row in rows]
    return lines + [""] + [f"{number}. {reason}" for reason, number in footnotes.items()]


def write(document, lines):
    """Puts the lines between the document's marks."""
    file = pathlib.Path(document)
    before, rest = file.read_text().split(BEGIN)
    after = rest.split(END)[1]
    file.write_text("\n".join([before + BEGIN, "", *lines, "", END]) + after)
