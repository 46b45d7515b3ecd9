#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""low_stock.py DATABASE LEAST [PRODUCT...]: the periods in which a product's stock fell below LEAST, by the rows of its journal as
the window shows them. It needs the program `stockbook` (or STOCKBOOK=PATH), and no other package of Python."""
import json
import os
import subprocess
import sys


def journal(database, product):
    """The rows of a product's journal: a dictionary each, by the keys of the columns."""
    command = [os.environ.get("STOCKBOOK", "stockbook"), "export", database, "--journal", "material", "--product", str(product),
               "--format", "ndjson"]
    with subprocess.Popen(command, stdout=subprocess.PIPE, encoding="utf-8") as running:
        for line in running.stdout:
            yield json.loads(line)
    if running.returncode != 0:
        sys.exit(running.returncode)


def main():
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    database, least, products = sys.argv[1], float(sys.argv[2]), sys.argv[3:] or ["1"]
    for product in products:
        lowest = {}
        for row in journal(database, product):
            # The first line tells of the columns; nodes are the captions of periods and their totals.
            if row.get("node", True):
                continue
            period, stock = row["text"].get("Period"), row["text"].get("StoQty")
            if period and stock and float(stock) < least:
                lowest[period] = min(float(stock), lowest.get(period, float(stock)))
        for period, stock in lowest.items():
            print(f"{product}\t{period}\t{stock:g}")


if __name__ == "__main__":
    main()
