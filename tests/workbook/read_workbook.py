"""Prints the first sheet of a workbook as another program reads it: a line per row, a JSON array of texts.

    read_workbook.py xlrd FILE.xls        xlrd itself
    read_workbook.py office FILE.fods     what LibreOffice made of the workbook
    read_workbook.py gnumeric FILE        what ssconvert made of it, as Gnumeric's XML

A text is "s:" and itself, a number "n:" and its shortest digits, a moment "d:" and "YYYY-MM-DD HH:MM:SS",
anything else "?:" and what there is of it; an empty cell is null. The last line is the name of the sheet.
"""

import datetime
import gzip
import json
import sys
import xml.etree.ElementTree as tree


def number(value):
    return "n:" + repr(float(value))


def moment(value):
    return "d:" + value.strftime("%Y-%m-%d %H:%M:%S")


def moment_of_days(days):
    seconds = round(float(days) * 86400)
    return moment(datetime.datetime(1899, 12, 30) + datetime.timedelta(seconds=seconds))


def read_xlrd(path):
    import xlrd

    book = xlrd.open_workbook(path, formatting_info=True)
    sheet = book.sheet_by_index(0)

    def cell_text(cell):
        if cell.ctype == xlrd.XL_CELL_TEXT:
            return "s:" + cell.value
        if cell.ctype == xlrd.XL_CELL_NUMBER:
            return number(cell.value)
        if cell.ctype == xlrd.XL_CELL_DATE:
            return moment(datetime.datetime(*xlrd.xldate_as_tuple(cell.value, book.datemode)))
        if cell.ctype in (xlrd.XL_CELL_EMPTY, xlrd.XL_CELL_BLANK):
            return None
        return "?:" + str(cell.value)

    return [[cell_text(cell) for cell in sheet.row(row)] for row in range(sheet.nrows)], sheet.name


def read_office(path):
    office = "{urn:oasis:names:tc:opendocument:xmlns:office:1.0}"
    table = "{urn:oasis:names:tc:opendocument:xmlns:table:1.0}"
    text = "{urn:oasis:names:tc:opendocument:xmlns:text:1.0}"

    def paragraph(element):
        parts = [element.text or ""]
        for child in element:
            if child.tag == text + "s":
                parts.append(" " * int(child.get(text + "c", "1")))
            elif child.tag == text + "tab":
                parts.append("\t")
            elif child.tag == text + "line-break":
                parts.append("\n")
            else:
                parts.append(paragraph(child))
            parts.append(child.tail or "")
        return "".join(parts)

    def cell_text(cell):
        kind = cell.get(office + "value-type")
        if kind == "string":
            return "s:" + "\n".join(paragraph(p) for p in cell.findall(text + "p"))
        if kind == "float":
            return number(cell.get(office + "value"))
        if kind == "date":
            return moment(datetime.datetime.fromisoformat(cell.get(office + "date-value")))
        return None if kind is None else "?:" + kind

    sheet = tree.parse(path).getroot().find(".//" + table + "table")
    rows = []
    for row in sheet.iter(table + "table-row"):
        cells = []
        for cell in row.findall(table + "table-cell"):
            cells += [cell_text(cell)] * min(int(cell.get(table + "number-columns-repeated", "1")), 256)
        while cells and cells[-1] is None:
            cells.pop()
        repeated = int(row.get(table + "number-rows-repeated", "1"))
        rows += [list(cells) for _ in range(repeated if cells else min(repeated, 100))]
    while rows and not rows[-1]:
        rows.pop()
    return rows, sheet.get(table + "name")


def read_gnumeric(path):
    ns = "{http://www.gnumeric.org/v10.dtd}"
    sheet = tree.parse(gzip.open(path)).getroot().find(".//" + ns + "Sheet")
    date_areas = []
    for region in sheet.iter(ns + "StyleRegion"):
        pattern = region.find(ns + "Style").get("Format", "")
        if "yy" in pattern:
            date_areas.append([int(region.get(k)) for k in ("startCol", "startRow", "endCol", "endRow")])

    def is_date(column, row):
        return any(a <= column <= c and b <= row <= d for a, b, c, d in date_areas)

    rows = []
    for cell in sheet.iter(ns + "Cell"):
        row, column = int(cell.get("Row")), int(cell.get("Col"))
        kind, value = cell.get("ValueType"), cell.text or ""
        if kind == "60":
            shown = "s:" + value
        elif kind == "40":
            shown = moment_of_days(value) if is_date(column, row) else number(value)
        else:
            shown = "?:" + value
        while len(rows) <= row:
            rows.append([])
        while len(rows[row]) <= column:
            rows[row].append(None)
        rows[row][column] = shown
    return rows, sheet.find(ns + "Name").text


READERS = {"xlrd": read_xlrd, "office": read_office, "gnumeric": read_gnumeric}

if __name__ == "__main__":
    rows, name = READERS[sys.argv[1]](sys.argv[2])
    sys.stdout.reconfigure(encoding="utf-8")
    for cells in rows:
        print(json.dumps(cells or [None], ensure_ascii=False, separators=(",", ":")))
    print(json.dumps([name], ensure_ascii=False))
