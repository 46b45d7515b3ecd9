#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""tests/end_to_end/spreadsheet_test.py PROGRAM: LibreOffice opens the workbooks that PROGRAM exports, and shows in every cell
what the program's separated values say there. Ends with 77 where there is no LibreOffice, or the program writes no workbooks."""
import pathlib
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
SKIPPED = 77
sys.dont_write_bytecode = True
sys.path.insert(0, str(ROOT / "tools" / "tour"))

import compare  # noqa: E402
import table  # noqa: E402

COLUMNS = ("product=商品编号,name=商品名称,bill=单据编号,date=日期,quantity=数量,price=单价,partner=供应商")
JOURNALS = [
    ["material", "--product", "1"],
    ["material", "--product", "2", "--from", "2025-02", "--to", "2025-02"],
    ["material", "--product", "3", "--qty2", "--tax"],
    ["supplier", "--product", "0"],
]


def export(program, inventory, journal, *more):
    done = subprocess.run([program, "export", inventory, "--journal", *journal, *more], capture_output=True)
    return done.returncode, done.stdout, done.stderr.decode("utf-8")


def main():
    program = pathlib.Path(sys.argv[1]).resolve()
    if shutil.which("soffice") is None:
        print("skipped: soffice is not installed (Debian: libreoffice-calc-nogui)")
        return SKIPPED
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        source, inventory = folder / "purchases.csv", folder / "purchases.db"
        source.write_bytes(table.text().encode("gbk"))
        subprocess.run([program, "import", source, "-o", inventory, "--direction", "receipt", "--map", COLUMNS], check=True,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        for number, journal in enumerate(JOURNALS):
            workbook = folder / f"journal{number}.xlsx"
            code, _, error = export(program, inventory, journal, "--format", "xlsx", "-o", workbook)
            if code != 0 and "libxlsxwriter" in error:
                print("skipped: the program was built without libxlsxwriter")
                return SKIPPED
            assert code == 0, error
            code, text, error = export(program, inventory, journal, "--split-bill")
            assert code == 0, error
            assert compare.compare(workbook, text.decode("utf-8"), folder) > 50, f"{journal} is too small to tell anything"
    return 0


if __name__ == "__main__":
    sys.exit(main())
