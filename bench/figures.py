"""Figures taken several times, and the tables that show them."""
import json
import statistics


class Figures:
    """Values by name, in the unit "s" or "bytes", or a word that is written behind the number."""

    def __init__(self):
        self.values, self.units, self.tables = {}, {}, {}

    def add(self, name, value, unit="s"):
        self.values.setdefault(name, []).append(value)
        self.units[name] = unit

    def add_row(self, table, *cells):
        """For what is better seen as a table of its own."""
        self.tables.setdefault(table, []).append(" | ".join(map(str, cells)))

    def __contains__(self, name):
        return name in self.values

    def text(self, name, of=statistics.median):
        return _text(of(self.values[name]), self.units[name])

    def details(self):
        yield "| | median | lowest | highest | taken |"
        yield "|---|---|---|---|---|"
        for name, values in self.values.items():
            same = min(values) == max(values)
            ends = ("", "") if same else (self.text(name, min), self.text(name, max))
            yield f"| {name} | {self.text(name)} | {ends[0]} | {ends[1]} | {len(values)} |"

    def save(self, path):
        with open(path, "w", encoding="utf-8") as file:
            json.dump([self.values, self.units, self.tables], file)

    def load(self, path):
        with open(path, encoding="utf-8") as file:
            for mine, loaded in zip((self.values, self.units, self.tables), json.load(file)):
                mine.update(loaded)


def _text(number, unit):
    if unit == "s":
        for factor, name in ((1, "s"), (1e3, "ms"), (1e6, "µs")):
            if number * factor >= 1 or name == "µs":
                return f"{_rounded(number * factor)} {name}"
    return f"{_rounded(number)} {unit}".rstrip()


def _rounded(number):
    if number >= 100 or number == int(number):
        return f"{round(number):,}"
    return f"{number:.3g}"
