# SPDX-License-Identifier: MIT
"""Compares a workbook with the command line's export of the same journal, cell by cell, as LibreOffice shows it."""
import csv
import io
import pathlib
import subprocess

# Commas, quotes, UTF-8, from the first line on, numbers as they are shown, every sheet into a file.
FILTER = "csv:Text - txt - csv (StarCalc):44,34,76,1,,0,false,true,true,false,false,-1"

NOTES = ("本期合计", "累计")


def shown_by_libreoffice(workbook, folder):
    subprocess.run(["soffice", f"-env:UserInstallation=file://{folder}/office", "--headless", "--convert-to", FILTER,
                    "--outdir", str(folder), str(workbook)], check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    [file] = pathlib.Path(folder).glob(f"{workbook.stem}-*.csv")
    return list(csv.reader(io.StringIO(file.read_text(encoding="utf-8"))))


def as_in_a_workbook(text):
    """The rows of `export --split-bill`: a workbook has no row numbers, captions of one line, and two rows of a total."""
    rows = [row[1:] for row in csv.reader(io.StringIO(text))]
    rows[0] = [caption.replace("\n", "") for caption in rows[0]]
    for row in rows:
        if not any("\n" in cell for cell in row):
            yield row
            continue
        for line, name in enumerate(("本期", "累计")):
            yield [f"{row[0]}（{name}）"] + [cell.split("\n")[line] if "\n" in cell else cell for cell in row[1:]]


def compare(workbook, exported, folder):
    """How many cells were compared."""
    shown, wanted = shown_by_libreoffice(workbook, folder), list(as_in_a_workbook(exported))
    # The window says beside a total what its two lines are.
    for row in shown:
        row[1:] = ["" if cell in NOTES else cell for cell in row[1:]]
    assert shown == wanted, f"LibreOffice shows\n{shown}\nand the journal is\n{wanted}"
    print(f"compared  {len(wanted)} rows with {sum(map(len, wanted))} cells as LibreOffice shows them", flush=True)
    return sum(map(len, wanted))
