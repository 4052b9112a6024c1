"""Makes a workbook of a list as xlwt does it: write_xlwt.py LIST.csv FILE.xls"""

import datetime
import sys

import xlwt

book = xlwt.Workbook(encoding="utf-8")
sheet = book.add_sheet("Feuille1")
day = xlwt.easyxf(num_format_str="dd/mm/yyyy")
with open(sys.argv[1], encoding="utf-8") as lines:
    for row, line in enumerate(lines):
        for column, text in enumerate(line.rstrip("\n").split(";")):
            if row > 0 and column % 3 == 1:
                sheet.write(row, column, float(text))
            elif row > 0 and column % 3 == 2:
                sheet.write(row, column, datetime.datetime.fromisoformat(text), day)
            else:
                sheet.write(row, column, text)
book.save(sys.argv[2])
