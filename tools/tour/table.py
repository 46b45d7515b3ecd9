# SPDX-License-Identifier: MIT
"""The table of movements that the tour imports: what an office's program writes, in GBK."""
import datetime

PRODUCTS = [("B0830", "六角螺栓 M8×30", 7.40), ("B1040", "六角螺栓 M10×40", 11.20), ("N0800", "六角螺母 M8", 3.10),
            ("W0800", "平垫圈 8", 1.25)]
PARTNERS = ["华东紧固件厂", "宏远标准件公司"]
HEADER = "日期,单据编号,商品编号,商品名称,数量,单价,供应商"
BILLS = 30


def lines():
    """The bills of three months, of two to four lines; every fifth one takes goods back to the supplier. One line has a
    day that does not exist."""
    day = datetime.date(2025, 1, 2)
    for bill in range(BILLS):
        number = f"{'TH' if bill % 5 == 4 else 'CG'}{day:%Y%m}-{bill + 1:03}"
        for line in range(2 + bill % 3):
            code, name, price = PRODUCTS[(bill + line) % len(PRODUCTS)]
            quantity = 40 + 13 * ((7 * bill + 3 * line) % 11)
            if bill % 5 == 4:
                quantity = -quantity // 4
            shown = f"{day.year}年{day.month}月{day.day}日"
            if bill == 17 and line == 0:
                shown = "2025年2月30日"
            yield f"{shown},{number},{code},{name},{quantity},￥{price + 0.05 * (bill % 7):.2f},{PARTNERS[bill % 2]}"
        day += datetime.timedelta(days=3)


def text():
    return "\r\n".join([HEADER, *lines(), ""])
