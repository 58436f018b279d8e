# SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Looks at what a tortured program has left in its folder, with the engine of python instead of the program's."""
import collections
import sqlite3

from models import COLUMNS, IMPORTED, LARGE


class Loss(Exception):
    """Something that must never be found."""


def is_hot(journal):
    """The engine writes the first byte of a journal only once the journal itself is safe."""
    try:
        return journal.read_bytes()[:1] not in (b"", b"\0")
    except FileNotFoundError:
        return False


def read(database, table):
    names = ",".join(f'"{name}"' for name in COLUMNS)
    rows = database.execute(f"SELECT id,{names} FROM {table} ORDER BY id").fetchall()
    return [tuple("" if value is None else value for value in found) for found in rows]


def difference(found, wanted):
    if len(found) != len(wanted):
        return f"{len(found)} rows instead of {len(wanted)}"
    return next((f"row {a[0]}: {[pair for pair in zip(a, b) if pair[0] != pair[1]]}"[:400]
                 for a, b in zip(found, wanted) if a != b), "right")


def check_counters(database, rows):
    log = COLUMNS.index("Nombre Log") + 1
    counted = collections.Counter(found[log] for found in rows if found[1])
    told = {name: count for name, count in database.execute('SELECT "Nombre Log", QSOs FROM Contadores') if count}
    if told != counted:
        raise Loss(f"the counters say {told}, there are {dict(counted)}")


def steps_in(path, model, candidates):
    """How many steps the database holds: one of `candidates`, which are counts of steps."""
    database = sqlite3.connect(path)
    try:
        integrity = database.execute("PRAGMA integrity_check").fetchone()[0]
        if integrity != "ok":
            raise Loss(f"integrity_check: {integrity}")
        general, contest = read(database, "Tabla1"), read(database, "Tabla2")
        check_counters(database, general)
        if database.execute("SELECT count(*) FROM Tabla3").fetchone()[0] not in (0, IMPORTED):
            raise Loss("Tabla3 holds a part of a file")
    finally:
        database.close()
    for steps in candidates:
        if general == model.general(steps) and contest == model.contest(steps):
            return steps
    first = candidates[0]
    raise Loss(f"not as after {first} steps: Tabla1 {difference(general, model.general(first))}, "
               f"Tabla2 {difference(contest, model.contest(first))}")


class Copies:
    """The safety copies of a folder; each is looked at once."""

    def __init__(self, folder):
        self.folder, self.seen = folder, {}

    def check(self, model, steps):
        """Every copy under its final name is whole and holds the log as it was at some time; gives how many are new."""
        fresh = 0
        for path in [*self.folder.glob("copias/base0_*.mdb"), *self.folder.glob("base0_??_??_??.mdb")]:
            identity = (path.stat().st_ino, path.stat().st_size)
            if self.seen.get(path.name) == identity:
                continue
            database = sqlite3.connect(path)
            count = database.execute("SELECT count(*) FROM Tabla1").fetchone()[0]
            database.close()
            if count - LARGE > steps:
                raise Loss(f"{path.name} holds {count} QSOs, the log has {steps + LARGE}")
            steps_in(path, model, [count - LARGE])
            self.seen[path.name] = identity
            fresh += 1
        left = [path.name for path in self.folder.rglob("*.nueva*")]
        if len({name.split(".nueva")[0] for name in left}) > 2:  # one of each kind may have been under way
            raise Loss(f"unfinished copies pile up: {sorted(left)}")
        return fresh
