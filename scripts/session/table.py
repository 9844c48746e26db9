"""Rows of text as a table."""


def table(rows):
    """Columns are those of the first row; each is as wide as its widest text."""
    names = list(rows[0]) if rows else []
    widths = {name: max(len(name), *(len(row[name]) for row in rows)) for name in names}
    heading = {name: name for name in names}
    rule = {name: "-" * widths[name] for name in names}
    return "\n".join("  ".join(row[name].ljust(widths[name]) for name in names).rstrip() for row in [heading, rule, *rows])
