# SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What the database must hold after so many steps of a scene, told independently of the program.

A model gives for a number of steps the rows of Tabla1 and Tabla2, ids included. Scenes.cpp does the steps; numbers and
texts must agree with it.
"""
import functools

LOG, CONTEST = "Log inicial", "Concurso"
COLUMNS = ["Modo", "Banda", "MyCall", "Estacion", "Fecha", "Hora", "RSE", "RSR", "Obs", "Operador", "Nombre Log",
           "Frecuencia", "MiGrid", "SuGrid", "LdA", "Nombre_Sat", "Argento", "SOTA", "IOTA", "POTA", "MYSOTA", "Perfil"]
EDITED, LARGE, CONTEST_QSOS, IMPORTED = 40, 150, 1000, 1500


def row(row_id, **values):
    values["Nombre Log"] = values.pop("Log")
    return (row_id, *(values.get(column, "") for column in COLUMNS))


def call_of(pair):
    return f"LU{pair // 676 % 9 + 1}M{chr(65 + pair // 26 % 26)}{chr(65 + pair % 26)}"


def time_of(number):
    return f"{number // 60 % 24:02}:{number % 60:02}"


@functools.cache
def qso(number, spread=True, width=400):
    """QSO `number`; the second of a pair spreads its grid to the first."""
    telegraphy = number % 3 == 0
    return row(number + 1, Modo="CW" if telegraphy else "SSB", Banda="20m", MyCall="LU9ZZZ",
               Estacion=call_of(number // 2), Fecha=f"2026-11-{number % 28 + 1:02}", Hora=time_of(number) + ":00",
               RSE="599" if telegraphy else "59", RSR="57", Obs=f"{number} " + "ñ" * (number * 37 % width),
               Operador="LU1AAA", Log=LOG, Frecuencia=f"14.{number % 350:03}", MiGrid="GF05AB",
               SuGrid="FF57" if spread or number % 2 == 1 else "", LdA="1", Argento="Mendoza",
               SOTA=f"LUM/M-{number % 1000}", IOTA="AR-0001", POTA=f"AR-{number % 100}", MYSOTA="LUH/H-001")


def qsos(first, end, width=400):
    return [qso(number, number + 1 < end, width) for number in range(first, end)]


@functools.cache
def contest_row(number):
    forty = number % 5 == 0
    return row(number + 2, Modo="CW" if number % 3 == 0 else "SSB", Banda="40m" if forty else "20m", MyCall="LU9ZZZ",
               Estacion=call_of(number), Fecha=f"202611{number % 28 + 1:02}", Hora=time_of(number).replace(":", ""),
               RSE=str(number + 1), RSR=str(number * 7 % 1000), Log=CONTEST, LdA=CONTEST, Nombre_Sat="Incremental",
               Frecuencia=("7" if forty else "14") + f"{number % 200:03}")


def contest(count):
    return [row(1, Log=CONTEST, LdA=CONTEST, Nombre_Sat="Incremental")] + [contest_row(i) for i in range(count)]


def transferred(number):
    report = "599" if number % 3 == 0 else "59"
    return dict(Modo="CW" if number % 3 == 0 else "SSB", Banda="40m" if number % 5 == 0 else "20m", MyCall="LU9ZZZ",
                Estacion=call_of(number), Fecha=f"2026-11-{number % 28 + 1:02}", Hora=time_of(number) + ":00",
                RSE=report, RSR=report, Obs="Concurso " + CONTEST, LdA="1", Argento="Mendoza",
                Frecuencia="7.000" if number % 5 == 0 else "14.000")


class Store:
    most = 1500  # steps in one folder

    def general(self, steps):
        return qsos(0, steps)

    def contest(self, _steps):
        return []

    def furnish(self, folder):
        """What the operator brings along."""


class Copy(Store):
    def general(self, steps):
        return qsos(0, LARGE, 20000) + qsos(LARGE, LARGE + steps)


class Contest(Store):
    def general(self, _steps):
        return []

    def contest(self, steps):
        return contest(steps)


class Delete(Store):
    def general(self, steps):
        return qsos(0, EDITED + (steps + 1) // 2)[steps // 2:]


class Edit(Store):
    def general(self, steps):
        rows = [dict(zip(COLUMNS, found[1:])) for found in qsos(0, EDITED)]
        for step in range(steps):
            edited = rows[step * 7 % EDITED]
            if step % 3 == 2:
                edited["LdA"] = str(step % 4)
                continue
            edited.update(Estacion=call_of(step), Modo="FM" if step % 2 == 0 else "DVoice", Banda="40m", LdA="",
                          Frecuencia=f"7.{step % 300}", Fecha=f"2026-10-{step % 28 + 1:02}", RSE=str(step % 60),
                          Obs=f"{step} " + "é" * (step * 91 % 1500), Nombre_Sat=f"SO-{step}")
        return [(number + 1, *edited.values()) for number, edited in enumerate(rows)]


class Transfer(Store):
    most = 12

    @functools.cache
    def of_step(self, step):
        return [row(step * CONTEST_QSOS + number + 1, Log=f"Log {step}", **transferred(number))
                for number in range(CONTEST_QSOS)]

    def general(self, steps):
        return sum((self.of_step(step) for step in range(steps)), [])

    def contest(self, _steps):
        return contest(CONTEST_QSOS)


class Import(Store):
    most = 12

    def furnish(self, folder):
        # One line of lone LF: the longest road through the reader.
        records = [f"<CALL:6>{call_of(i)}<QSO_DATE:8>202609{i % 28 + 1:02}<TIME_ON:4>{time_of(i).replace(':', '')}"
                   f"<MODE:2>FM<BAND:2>2M<FREQ:7>145.500\n<STATION_CALLSIGN:6>LU0ZZZ<RST_SENT:2>59<RST_RCVD:2>57"
                   f"<NAME:{len(f'LUM/M-{i}')}>LUM/M-{i}<COMMENT:{len(f'QSO {i}')}>QSO {i}<EOR>\n"
                   for i in range(IMPORTED)]
        (folder / "import.adi").write_bytes(("<PROGRAMID:4>Test<EOH>\n" + "".join(records)).encode("ascii"))

    @functools.cache
    def of_station(self, station, repeated):
        """The newest comes in first; repeats bring the references of the summits."""
        order = sorted(range(IMPORTED), key=lambda i: (i % 28, i // 60 % 24, i % 60, i), reverse=True)
        return [row(station * IMPORTED + place + 1, Modo="FM", Banda="2M", MyCall=f"LU{station}ZZZ",
                    Estacion=call_of(i), Fecha=f"2026-09-{i % 28 + 1:02}", Hora=time_of(i) + ":00", RSE="59", RSR="57",
                    Obs=f"QSO {i}", Log=LOG, Frecuencia="145.500", LdA="0", Argento="Mendoza",
                    SOTA=f"LUM/M-{i}" if repeated else "", MYSOTA=f"QSO {i}" if repeated else "")
                for place, i in enumerate(order)]

    def general(self, steps):
        return sum((self.of_station(station, steps >= 2 * station + 2) for station in range((steps + 1) // 2)), [])


MODELS = {"store": Store, "edit": Edit, "delete": Delete, "contest": Contest, "import": Import,
          "transfer": Transfer, "copy": Copy}
