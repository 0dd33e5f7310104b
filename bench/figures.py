"""Figures of several rounds, and the table that shows their medians."""
import statistics


class Figures:
    def __init__(self):
        self.values = {}

    def add(self, name, value, unit):
        self.values.setdefault((name, unit), []).append(value)

    def print_table(self):
        width = max(len(name) for name, _ in self.values)
        print(f"{'':{width}}   {'median':>9}  {'lowest':>9}  {'highest':>9}  unit (times taken)")
        for (name, unit), values in self.values.items():
            numbers = [statistics.median(values), min(values), max(values)]
            print(f"{name:{width}}   " + "  ".join(f"{_rounded(number):>9}" for number in numbers) +
                  f"  {unit} ({len(values)})")


def _rounded(number):
    if isinstance(number, int) or number >= 1000:
        return f"{round(number):,}"
    return f"{number:.3g}" if number < 100 else f"{number:.0f}"
