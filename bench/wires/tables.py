# SPDX-License-Identifier: MIT
"""Tables of text."""


def table(rows):
    widths = [max(len(str(row[place])) for row in rows) for place in range(len(rows[0]))]
    for row in rows:
        print("  ".join(str(cell).ljust(width) if place == 0 else str(cell).rjust(width)
                        for place, (cell, width) in enumerate(zip(row, widths))))
    print()
