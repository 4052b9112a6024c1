"""The due list as one would script it today: both tables through mdb-export into sqlite3, then the query.

Usage: due_list.py talmeon.mdb 2026-12-31
"""
import calendar
import csv
import datetime
import io
import sqlite3
import subprocess
import sys

QUERY = """
    SELECT add_months(TVEH_DETAIL_DATVIS, TVEH_DETAIL_PERIOD) AS due, TVEH_DETAIL_PERIOD, TVEH_DETAIL_DATVIS,
           TVEH_MARQUE, TVEH_IMMAT, TVEH_EDIT, TVEH_CODCLI, TVEH_DETAIL_TypTrav
    FROM TVEH_DETAIL LEFT JOIN TVEH ON TVEH_DETAIL_Immat = TVEH_IMMAT COLLATE NOCASE
    WHERE due < ? AND CAST(TVEH_DETAIL_PERIOD AS INTEGER) <> 0
    ORDER BY TVEH_CODCLI COLLATE NOCASE, TVEH_IMMAT COLLATE NOCASE, TVEH_DETAIL_TypTrav COLLATE NOCASE
"""


def add_months(date, months):
    if not date or not months:
        return None
    start = datetime.date.fromisoformat(date)
    year, month = divmod(start.year * 12 + start.month - 1 + int(months), 12)
    last_day = calendar.monthrange(year, month + 1)[1]
    return start.replace(year=year, month=month + 1, day=min(start.day, last_day)).isoformat()


def load(database, file, table):
    text = subprocess.run(["mdb-export", "-T", "%Y-%m-%d", file, table],
                          check=True, capture_output=True, encoding="utf-8").stdout
    rows = csv.reader(io.StringIO(text))
    header = next(rows)
    database.execute(f"CREATE TABLE {table} ({', '.join(header)})")
    database.executemany(f"INSERT INTO {table} VALUES ({', '.join('?' * len(header))})", rows)


def main(file, before):
    database = sqlite3.connect(":memory:")
    database.create_function("add_months", 2, add_months, deterministic=True)
    load(database, file, "TVEH")
    load(database, file, "TVEH_DETAIL")
    database.execute("CREATE INDEX registration ON TVEH (TVEH_IMMAT COLLATE NOCASE)")
    csv.writer(sys.stdout).writerows(database.execute(QUERY, (before,)))


if __name__ == "__main__":
    main(*sys.argv[1:])
