<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>stockbook</name>
    <message>
        <source>
只算选中的明细行，合计行不算在内。</source>
        <translation>
Only selected lines count, totals do not.</translation>
    </message>
    <message>
        <source> 毫米</source>
        <translation> mm</translation>
    </message>
    <message>
        <source> 页宽</source>
        <translation> pages wide</translation>
    </message>
    <message>
        <source>%1 %L2 行</source>
        <translation>%1: %L2 rows</translation>
    </message>
    <message>
        <source>%1　结存 %2</source>
        <translation>%1, in stock %2</translation>
    </message>
    <message>
        <source>%1没有单据。</source>
        <translation>%1 has no bills.</translation>
    </message>
    <message>
        <source>%1至%2</source>
        <translation>%1 to %2</translation>
    </message>
    <message>
        <source>%1起</source>
        <translation>from %1</translation>
    </message>
    <message>
        <source>%L1 个供应商</source>
        <translation>%L1 suppliers</translation>
    </message>
    <message>
        <source>%L1 个客户</source>
        <translation>%L1 customers</translation>
    </message>
    <message>
        <source>%L1 行</source>
        <translation>%L1 lines</translation>
    </message>
    <message>
        <source>%L1 行没有供应商的记录</source>
        <translation>%L1 lines without a supplier</translation>
    </message>
    <message>
        <source>%L1 行没有客户的记录</source>
        <translation>%L1 lines without a customer</translation>
    </message>
    <message>
        <source>* ? # [ ] 代表任意文字、一个字、一个数字、列出的字</source>
        <translation>* ? # [ ] stand for any text, a character, a digit, one of a list</translation>
    </message>
    <message>
        <source>Big5（繁体）</source>
        <translation>Big5 (traditional)</translation>
    </message>
    <message>
        <source>CSV 表格</source>
        <translation>CSV table</translation>
    </message>
    <message>
        <source>PDF 文件</source>
        <translation>PDF file</translation>
    </message>
    <message>
        <source>PNG 图片，当前画面</source>
        <translation>PNG picture of the view</translation>
    </message>
    <message>
        <source>Windows-1252（西文）</source>
        <translation>Windows-1252 (western)</translation>
    </message>
    <message>
        <source>XLSX 工作簿</source>
        <translation>XLSX workbook</translation>
    </message>
    <message>
        <source>“%1”不是期间或日期：请输入如 2025-03、2025-03-15、2025Q1 或 2025，留空为不限。</source>
        <translation>“%1” is no period or date: type one like 2025-03, 2025-03-15, 2025Q1 or 2025, or nothing for no limit.</translation>
    </message>
    <message>
        <source>“%1”的密码：</source>
        <translation>Password of “%1”:</translation>
    </message>
    <message>
        <source>　单价 %1</source>
        <translation>, price %1</translation>
    </message>
    <message>
        <source>上一个(&amp;R)</source>
        <translation>P&amp;revious</translation>
    </message>
    <message>
        <source>上一个（Shift+F3）</source>
        <translation>Previous (Shift+F3)</translation>
    </message>
    <message>
        <source>上一屏、下一屏</source>
        <translation>One screen up or down</translation>
    </message>
    <message>
        <source>上一页</source>
        <translation>Previous</translation>
    </message>
    <message>
        <source>上月</source>
        <translation>Last month</translation>
    </message>
    <message>
        <source>上次的库存“%1”已不在原处，现在打开的是示例库存。</source>
        <translation>The inventory of last time, “%1”, is no longer there; this is the sample.</translation>
    </message>
    <message>
        <source>上次的库存“%1”打不开，现在打开的是示例库存。%2</source>
        <translation>The inventory of last time, “%1”, cannot be opened; this is the sample. %2</translation>
    </message>
    <message>
        <source>上移</source>
        <translation>Move up</translation>
    </message>
    <message>
        <source>上边距(&amp;T)：</source>
        <translation>&amp;Top margin:</translation>
    </message>
    <message>
        <source>下一个(&amp;N)</source>
        <translation>&amp;Next</translation>
    </message>
    <message>
        <source>下一个（F3）</source>
        <translation>Next (F3)</translation>
    </message>
    <message>
        <source>下一页</source>
        <translation>Next</translation>
    </message>
    <message>
        <source>下次打开窗口时使用所选的语言。The language is used from the next start on.</source>
        <translation>The language is used from the next start on.</translation>
    </message>
    <message>
        <source>下移</source>
        <translation>Move down</translation>
    </message>
    <message>
        <source>下边距(&amp;B)：</source>
        <translation>&amp;Bottom margin:</translation>
    </message>
    <message>
        <source>不能写入“%1”：它是要导入的表，或属于另一个数据库，请换一个文件名。</source>
        <translation>“%1” cannot be written: it is the table to be imported, or belongs to another database; choose another name.</translation>
    </message>
    <message>
        <source>不限</source>
        <translation>Any</translation>
    </message>
    <message>
        <source>交接人</source>
        <translation>Handed over to</translation>
    </message>
    <message>
        <source>从</source>
        <translation>From</translation>
    </message>
    <message>
        <source>从(&amp;B)</source>
        <translation>From (&amp;B)</translation>
    </message>
    <message>
        <source>仓库</source>
        <translation>Depot</translation>
    </message>
    <message>
        <source>仓库(&amp;W)</source>
        <translation>&amp;Depot</translation>
    </message>
    <message>
        <source>以%1分隔</source>
        <translation>Delimiter %1</translation>
    </message>
    <message>
        <source>作用</source>
        <translation>What they do</translation>
    </message>
    <message>
        <source>供应商</source>
        <translation>Supplier</translation>
    </message>
    <message>
        <source>供应商(&amp;S)</source>
        <translation>&amp;Supplier</translation>
    </message>
    <message>
        <source>供应商台账</source>
        <translation>Supplier journal</translation>
    </message>
    <message>
        <source>停止读取，保留原来的台账（Esc）</source>
        <translation>Stops reading and keeps the journal as it was (Esc)</translation>
    </message>
    <message>
        <source>入库</source>
        <translation>Receipt</translation>
    </message>
    <message>
        <source>入库合计</source>
        <translation>Total received</translation>
    </message>
    <message>
        <source>入库（采购）</source>
        <translation>Receipts (purchases)</translation>
    </message>
    <message>
        <source>全字(&amp;Q)</source>
        <translation>Whole words (&amp;Q)</translation>
    </message>
    <message>
        <source>全字匹配</source>
        <translation>Whole words</translation>
    </message>
    <message>
        <source>全选</source>
        <translation>Select all</translation>
    </message>
    <message>
        <source>全部</source>
        <translation>All</translation>
    </message>
    <message>
        <source>全部仓库</source>
        <translation>All depots</translation>
    </message>
    <message>
        <source>全部供应商</source>
        <translation>All suppliers</translation>
    </message>
    <message>
        <source>全部商品</source>
        <translation>All products</translation>
    </message>
    <message>
        <source>全部客户</source>
        <translation>All customers</translation>
    </message>
    <message>
        <source>全部记录，因为没有分类以“%1”开头的供应商</source>
        <translation>every line, because no supplier's class begins with “%1”</translation>
    </message>
    <message>
        <source>全部记录，因为没有分类以“%1”开头的客户</source>
        <translation>every line, because no customer's class begins with “%1”</translation>
    </message>
    <message>
        <source>全部项目</source>
        <translation>All projects</translation>
    </message>
    <message>
        <source>共 %L1 行</source>
        <translation>%L1 lines</translation>
    </message>
    <message>
        <source>关闭(&amp;C)</source>
        <translation>&amp;Close</translation>
    </message>
    <message>
        <source>关闭提示</source>
        <translation>Close the notice</translation>
    </message>
    <message>
        <source>关闭查找</source>
        <translation>Close the find bar</translation>
    </message>
    <message>
        <source>关闭（Esc）</source>
        <translation>Close (Esc)</translation>
    </message>
    <message>
        <source>内存不足，没有写入任何内容：请关闭其他程序，或把表分成几份。</source>
        <translation>There is not enough memory, and nothing was written: close other programs or split the table.</translation>
    </message>
    <message>
        <source>冻结</source>
        <translation>Frozen</translation>
    </message>
    <message>
        <source>冻结到当前列(&amp;Z)</source>
        <translation>Free&amp;ze up to the current column</translation>
    </message>
    <message>
        <source>冻结到此列(&amp;Z)</source>
        <translation>Free&amp;ze up to here</translation>
    </message>
    <message>
        <source>冻结的列最多占视图的三分之二，其余的列在窗口变宽后冻结。</source>
        <translation>Frozen columns take at most two thirds of the view; the others freeze once the window is wider.</translation>
    </message>
    <message>
        <source>几个词用空格隔开；数照显示的样子写</source>
        <translation>Words with blanks between them; numbers as they are shown</translation>
    </message>
    <message>
        <source>出库</source>
        <translation>Issue</translation>
    </message>
    <message>
        <source>出库合计</source>
        <translation>Total issued</translation>
    </message>
    <message>
        <source>出库（销售）</source>
        <translation>Issues (sales)</translation>
    </message>
    <message>
        <source>分号</source>
        <translation>Semicolon</translation>
    </message>
    <message>
        <source>分类以“%1”开头的供应商</source>
        <translation>suppliers whose class begins with “%1”</translation>
    </message>
    <message>
        <source>分类以“%1”开头的客户</source>
        <translation>customers whose class begins with “%1”</translation>
    </message>
    <message>
        <source>分隔符(&amp;D)</source>
        <translation>&amp;Delimiter</translation>
    </message>
    <message>
        <source>列出找到的全部内容和所在期间</source>
        <translation>Lists all hits with their periods</translation>
    </message>
    <message>
        <source>列太多时缩小到这么多页；续页上重复“单据”列</source>
        <translation>Where there are too many columns they shrink to so many pages; the others repeat the column of bills</translation>
    </message>
    <message>
        <source>列宽适应内容(&amp;W)</source>
        <translation>Fit the &amp;widths to the contents</translation>
    </message>
    <message>
        <source>列表(&amp;K)</source>
        <translation>List (&amp;K)</translation>
    </message>
    <message>
        <source>列设置</source>
        <translation>Columns</translation>
    </message>
    <message>
        <source>列设置(&amp;C)...</source>
        <translation>&amp;Columns...</translation>
    </message>
    <message>
        <source>刚才看的是单据 %1。</source>
        <translation>You came from bill %1.</translation>
    </message>
    <message>
        <source>到</source>
        <translation>To</translation>
    </message>
    <message>
        <source>到(&amp;Z)</source>
        <translation>To (&amp;Z)</translation>
    </message>
    <message>
        <source>制表符</source>
        <translation>Tab</translation>
    </message>
    <message>
        <source>前 %L1 行中</source>
        <translation>Of the first %L1 rows</translation>
    </message>
    <message>
        <source>前一区间</source>
        <translation>Previous range</translation>
    </message>
    <message>
        <source>前一区间(&amp;P)</source>
        <translation>&amp;Previous range</translation>
    </message>
    <message>
        <source>前一区间（Alt+Page Up）</source>
        <translation>Previous range (Alt+Page Up)</translation>
    </message>
    <message>
        <source>前进(&amp;F)</source>
        <translation>&amp;Forward</translation>
    </message>
    <message>
        <source>包装</source>
        <translation>Packing</translation>
    </message>
    <message>
        <source>区分大小写</source>
        <translation>Upper and lower case differ</translation>
    </message>
    <message>
        <source>区间</source>
        <translation>Range</translation>
    </message>
    <message>
        <source>区间(&amp;A)</source>
        <translation>R&amp;ange</translation>
    </message>
    <message>
        <source>区间(&amp;J)</source>
        <translation>Range (&amp;J)</translation>
    </message>
    <message>
        <source>区间、汇总与走势(&amp;R)</source>
        <translation>&amp;Range, totals and plots</translation>
    </message>
    <message>
        <source>区间只含这一期间的一部分，各数只计显示的行</source>
        <translation>The range has only a part of this period; the numbers count the rows that are shown</translation>
    </message>
    <message>
        <source>区间的起点 %1 晚于终点 %2：请交换或修改。</source>
        <translation>The range begins at %1, after its end %2: swap or change them.</translation>
    </message>
    <message>
        <source>单价</source>
        <translation>Price</translation>
    </message>
    <message>
        <source>单位</source>
        <translation>Unit</translation>
    </message>
    <message>
        <source>单元格、列标题的快捷菜单</source>
        <translation>Menu of the cell or of its column</translation>
    </message>
    <message>
        <source>单据</source>
        <translation>Bill</translation>
    </message>
    <message>
        <source>单据列带有会计期的折叠标志，不能隐藏。</source>
        <translation>The column of bills has the signs of the periods and cannot be hidden.</translation>
    </message>
    <message>
        <source>单据没有读出：%1</source>
        <translation>The bill could not be read: %1</translation>
    </message>
    <message>
        <source>单据的行</source>
        <translation>Lines of the bill</translation>
    </message>
    <message>
        <source>单据编号</source>
        <translation>Bill number</translation>
    </message>
    <message>
        <source>双数量(&amp;2)</source>
        <translation>&amp;2nd quantity</translation>
    </message>
    <message>
        <source>双数量、税额、隐藏金额</source>
        <translation>Second quantity, tax, hidden amounts</translation>
    </message>
    <message>
        <source>发出数量</source>
        <translation>Quantity out</translation>
    </message>
    <message>
        <source>发出金额</source>
        <translation>Amount out</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>取消(&amp;C)</source>
        <translation>&amp;Cancel</translation>
    </message>
    <message>
        <source>取消冻结(&amp;U)</source>
        <translation>&amp;Unfreeze</translation>
    </message>
    <message>
        <source>取消拖动；在选择框中恢复原来的选择</source>
        <translation>Cancels dragging; restores the choice in a chooser</translation>
    </message>
    <message>
        <source>另存图(&amp;X)...</source>
        <translation>Keep the graph as (&amp;X)...</translation>
    </message>
    <message>
        <source>另存走势图</source>
        <translation>Save the graph</translation>
    </message>
    <message>
        <source>只找完整的词和数，如 12 不在 112 里</source>
        <translation>Only whole words and numbers: 12 is not in 112</translation>
    </message>
    <message>
        <source>只看将被跳过的行(&amp;K)</source>
        <translation>Only rows that would be s&amp;kipped</translation>
    </message>
    <message>
        <source>台账中合计行的上一个数是本期合计，下一个数是从第一笔起的累计（不含期初）。</source>
        <translation>In the total rows of the journal the upper number is the sum of the period, the lower one the sum since the first line, without the opening balance.</translation>
    </message>
    <message>
        <source>台账中没有这一行的来源入库（记录号 %1）。</source>
        <translation>The journal does not have the receipt that this row comes from (record %1).</translation>
    </message>
    <message>
        <source>台账中没有这张调拨单的另一方。</source>
        <translation>The journal does not have the other side of this transfer.</translation>
    </message>
    <message>
        <source>台账没有载入：%1</source>
        <translation>The journal was not loaded: %1</translation>
    </message>
    <message>
        <source>台账的列</source>
        <translation>Columns of the journal</translation>
    </message>
    <message>
        <source>台账的开头、结尾</source>
        <translation>Beginning or end of the journal</translation>
    </message>
    <message>
        <source>台账类型</source>
        <translation>Kind of journal</translation>
    </message>
    <message>
        <source>右边距(&amp;R)：</source>
        <translation>&amp;Right margin:</translation>
    </message>
    <message>
        <source>合计</source>
        <translation>Total</translation>
    </message>
    <message>
        <source>合计行有两行数字：上面是本期合计，下面是累计。
数量右上角的圆点：这一行记录了库存来源。
####：列太窄，放不下数字；浅色的####：列的一部分在窗口外，横向滚动可见。</source>
        <translation>Total rows have two numbers: above the sum of the period, below the sum since the beginning.
A dot at the top right of a quantity: the row says where its stock came from.
####: the column is too narrow for the number; in pale: part of the column is outside the window, scroll sideways.</translation>
    </message>
    <message>
        <source>名称</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>后一区间</source>
        <translation>Next range</translation>
    </message>
    <message>
        <source>后一区间(&amp;N)</source>
        <translation>&amp;Next range</translation>
    </message>
    <message>
        <source>后一区间（Alt+Page Down）</source>
        <translation>Next range (Alt+Page Down)</translation>
    </message>
    <message>
        <source>后退(&amp;B)</source>
        <translation>&amp;Back</translation>
    </message>
    <message>
        <source>含税单价</source>
        <translation>Price with tax</translation>
    </message>
    <message>
        <source>含税金额</source>
        <translation>Amount with tax</translation>
    </message>
    <message>
        <source>商品</source>
        <translation>Product</translation>
    </message>
    <message>
        <source>商品(&amp;P)</source>
        <translation>&amp;Product</translation>
    </message>
    <message>
        <source>商品、供应商、客户或项目(&amp;S)</source>
        <translation>Product, &amp;supplier, customer or project</translation>
    </message>
    <message>
        <source>商品台账</source>
        <translation>Product journal</translation>
    </message>
    <message>
        <source>商品名称</source>
        <translation>Product name</translation>
    </message>
    <message>
        <source>商品编号</source>
        <translation>Product number</translation>
    </message>
    <message>
        <source>图片 (*.png);;PDF 文件 (*.pdf);;矢量图 (*.svg)</source>
        <translation>Pictures (*.png);;PDF files (*.pdf);;Vector graphics (*.svg)</translation>
    </message>
    <message>
        <source>在单据上：查看单据</source>
        <translation>On a bill: shows the bill</translation>
    </message>
    <message>
        <source>均价</source>
        <translation>Average price</translation>
    </message>
    <message>
        <source>型号</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>复制(&amp;C)</source>
        <translation>&amp;Copy</translation>
    </message>
    <message>
        <source>复制本格(&amp;V)</source>
        <translation>Copy the &amp;value of the cell</translation>
    </message>
    <message>
        <source>大小写(&amp;U)</source>
        <translation>Case (&amp;U)</translation>
    </message>
    <message>
        <source>字段</source>
        <translation>Field</translation>
    </message>
    <message>
        <source>存为 PDF(&amp;S)...</source>
        <translation>&amp;Save as PDF...</translation>
    </message>
    <message>
        <source>存为文件</source>
        <translation>Save as a file</translation>
    </message>
    <message>
        <source>它是一个文件夹；请换一个文件名</source>
        <translation>it is a folder; choose another name</translation>
    </message>
    <message>
        <source>它是数据库，或属于数据库，不能覆盖；请换一个文件名</source>
        <translation>it is a database or belongs to one and is not overwritten; choose another name</translation>
    </message>
    <message>
        <source>实际大小(&amp;N)</source>
        <translation>&amp;Normal size</translation>
    </message>
    <message>
        <source>审核员</source>
        <translation>Audited by</translation>
    </message>
    <message>
        <source>审核日期</source>
        <translation>Audited on</translation>
    </message>
    <message>
        <source>客户</source>
        <translation>Customer</translation>
    </message>
    <message>
        <source>客户(&amp;S)</source>
        <translation>Cu&amp;stomer</translation>
    </message>
    <message>
        <source>客户台账</source>
        <translation>Customer journal</translation>
    </message>
    <message>
        <source>宽度(&amp;W)：</source>
        <translation>&amp;Width:</translation>
    </message>
    <message>
        <source>宽度（像素）</source>
        <translation>Width (pixels)</translation>
    </message>
    <message>
        <source>密码</source>
        <translation>Password</translation>
    </message>
    <message>
        <source>导入</source>
        <translation>Import</translation>
    </message>
    <message>
        <source>导入 — %1</source>
        <translation>Import — %1</translation>
    </message>
    <message>
        <source>导入(&amp;I)...</source>
        <translation>&amp;Import...</translation>
    </message>
    <message>
        <source>导入到新的库存数据库</source>
        <translation>Import into a new inventory</translation>
    </message>
    <message>
        <source>导入已取消，没有写入任何内容。</source>
        <translation>The import was cancelled; nothing was written.</translation>
    </message>
    <message>
        <source>导入没有完成，没有写入任何内容：%1</source>
        <translation>The import was not finished, and nothing was written: %1</translation>
    </message>
    <message>
        <source>导入表格</source>
        <translation>Import a table</translation>
    </message>
    <message>
        <source>导出(&amp;E)...</source>
        <translation>&amp;Export...</translation>
    </message>
    <message>
        <source>导出台账</source>
        <translation>Export the journal</translation>
    </message>
    <message>
        <source>导出已取消，没有写文件。</source>
        <translation>The export was cancelled; no file was written.</translation>
    </message>
    <message>
        <source>小数点(&amp;P)</source>
        <translation>Decimal &amp;point</translation>
    </message>
    <message>
        <source>展开全部(&amp;E)</source>
        <translation>&amp;Expand all</translation>
    </message>
    <message>
        <source>工作表(&amp;S)</source>
        <translation>&amp;Sheet</translation>
    </message>
    <message>
        <source>左边距(&amp;L)：</source>
        <translation>&amp;Left margin:</translation>
    </message>
    <message>
        <source>已写入 %1。</source>
        <translation>%1 was written.</translation>
    </message>
    <message>
        <source>已取消打开。</source>
        <translation>Opening was cancelled.</translation>
    </message>
    <message>
        <source>已取消读取。</source>
        <translation>Reading was cancelled.</translation>
    </message>
    <message>
        <source>已导入 %L1 行：出库 %L2 行，入库 %L3 行；单据 %L4 张，商品 %L5 种，期间 %L6 个</source>
        <translation>%L1 rows imported: %L2 issues, %L3 receipts; %L4 bills, %L5 products, %L6 periods</translation>
    </message>
    <message>
        <source>已导出：%1</source>
        <translation>Exported: %1</translation>
    </message>
    <message>
        <source>已打印走势图。</source>
        <translation>The graph was printed.</translation>
    </message>
    <message>
        <source>已读 %L1 行</source>
        <translation>%L1 rows read</translation>
    </message>
    <message>
        <source>已送去打印，共 %1 页。</source>
        <translation>%1 pages were sent to the printer.</translation>
    </message>
    <message>
        <source>帮助(&amp;H)</source>
        <translation>&amp;Help</translation>
    </message>
    <message>
        <source>序列号</source>
        <translation>Serial number</translation>
    </message>
    <message>
        <source>库存中已经没有这张单据，请重新载入台账（F5）。</source>
        <translation>The inventory does not have this bill any more; reload the journal (F5).</translation>
    </message>
    <message>
        <source>库存台账</source>
        <translation>Stock journals</translation>
    </message>
    <message>
        <source>库存台账 %1 版</source>
        <translation>Stock journals, version %1</translation>
    </message>
    <message>
        <source>库存已被其他程序修改，这里显示的是修改以前的台账。</source>
        <translation>Another program has changed the inventory; what is shown here is the journal before that.</translation>
    </message>
    <message>
        <source>库存数据库 (*.db *.mdb *.accdb);;所有文件 (*)</source>
        <translation>Inventories (*.db *.mdb *.accdb);;All files (*)</translation>
    </message>
    <message>
        <source>库存数据库 (*.db)</source>
        <translation>Inventories (*.db)</translation>
    </message>
    <message>
        <source>录入员</source>
        <translation>Entered by</translation>
    </message>
    <message>
        <source>录入日期</source>
        <translation>Entered on</translation>
    </message>
    <message>
        <source>往来单位</source>
        <translation>Partner</translation>
    </message>
    <message>
        <source>快捷键</source>
        <translation>Keys</translation>
    </message>
    <message>
        <source>快捷键与版本</source>
        <translation>Keys and version</translation>
    </message>
    <message>
        <source>快捷键与版本(&amp;K)...</source>
        <translation>&amp;Keys and version...</translation>
    </message>
    <message>
        <source>恢复默认(&amp;D)</source>
        <translation>Restore &amp;defaults</translation>
    </message>
    <message>
        <source>打不开“%1”。</source>
        <translation>“%1” cannot be opened.</translation>
    </message>
    <message>
        <source>打不开数据库</source>
        <translation>The database cannot be opened</translation>
    </message>
    <message>
        <source>打印(&amp;P)...</source>
        <translation>&amp;Print...</translation>
    </message>
    <message>
        <source>打印图(&amp;C)...</source>
        <translation>Print the graph (&amp;C)...</translation>
    </message>
    <message>
        <source>打印已取消。</source>
        <translation>Printing was cancelled.</translation>
    </message>
    <message>
        <source>打印机“%1”不接受文档；请检查它是否接通，或换一台打印机。</source>
        <translation>The printer “%1” takes no documents; see whether it is connected, or choose another one.</translation>
    </message>
    <message>
        <source>打印机“%1”中途不再接受文档，后面的页没有打印；请检查打印机后再打印一次。</source>
        <translation>The printer “%1” stopped taking pages, and the rest is not printed; see to it and print again.</translation>
    </message>
    <message>
        <source>打印机没有接受走势图：请检查打印机，或另存为 PDF。</source>
        <translation>The printer did not take the graph: see to it, or save a PDF.</translation>
    </message>
    <message>
        <source>打印走势图</source>
        <translation>Print the graph</translation>
    </message>
    <message>
        <source>打印预览</source>
        <translation>Print preview</translation>
    </message>
    <message>
        <source>打印预览(&amp;V)...</source>
        <translation>Print pre&amp;view...</translation>
    </message>
    <message>
        <source>打开数据库</source>
        <translation>Open a database</translation>
    </message>
    <message>
        <source>打开数据库(&amp;O)...</source>
        <translation>&amp;Open...</translation>
    </message>
    <message>
        <source>找不到绘图库 PLplot 或它的 cairo 驱动，不能作图：请安装软件包 plplot-driver-cairo。</source>
        <translation>The plotting library PLplot or its driver for cairo is missing, so nothing can be drawn: install the package plplot-driver-cairo.</translation>
    </message>
    <message>
        <source>找到的内容</source>
        <translation>Hit</translation>
    </message>
    <message>
        <source>找到的台账</source>
        <translation>Journals found</translation>
    </message>
    <message>
        <source>折叠、展开全部会计期</source>
        <translation>Close or open all periods</translation>
    </message>
    <message>
        <source>折叠、展开当前会计期</source>
        <translation>Close or open the current period</translation>
    </message>
    <message>
        <source>折叠全部(&amp;A)</source>
        <translation>Collapse &amp;all</translation>
    </message>
    <message>
        <source>按键</source>
        <translation>Keys</translation>
    </message>
    <message>
        <source>摘要</source>
        <translation>Remark</translation>
    </message>
    <message>
        <source>撤销</source>
        <translation>Undo</translation>
    </message>
    <message>
        <source>撤销列布局(&amp;U)</source>
        <translation>&amp;Undo the change of columns</translation>
    </message>
    <message>
        <source>收入数量</source>
        <translation>Quantity in</translation>
    </message>
    <message>
        <source>收入金额</source>
        <translation>Amount in</translation>
    </message>
    <message>
        <source>收入（上）与发出（下）</source>
        <translation>Receipts (up) and issues (down)</translation>
    </message>
    <message>
        <source>放大</source>
        <translation>Zoom in</translation>
    </message>
    <message>
        <source>放大(&amp;I)</source>
        <translation>Zoom &amp;in</translation>
    </message>
    <message>
        <source>数量</source>
        <translation>Quantity</translation>
    </message>
    <message>
        <source>数量2</source>
        <translation>Quantity 2</translation>
    </message>
    <message>
        <source>整页</source>
        <translation>Whole page</translation>
    </message>
    <message>
        <source>文件(&amp;F)</source>
        <translation>&amp;File</translation>
    </message>
    <message>
        <source>文件“%1”没有写成：%2。</source>
        <translation>The file “%1” was not written: %2.</translation>
    </message>
    <message>
        <source>方向</source>
        <translation>Direction</translation>
    </message>
    <message>
        <source>方向(&amp;O)：</source>
        <translation>&amp;Orientation:</translation>
    </message>
    <message>
        <source>日期</source>
        <translation>Date</translation>
    </message>
    <message>
        <source>是</source>
        <translation>Yes</translation>
    </message>
    <message>
        <source>显示 %L1 行，共 %L2 行</source>
        <translation>%L1 of %L2 lines shown</translation>
    </message>
    <message>
        <source>显示全部</source>
        <translation>Show all</translation>
    </message>
    <message>
        <source>显示全部，关闭</source>
        <translation>Show all and close</translation>
    </message>
    <message>
        <source>显示税率、税额和含税金额；隐藏金额时不可用</source>
        <translation>Shows tax rates, taxes and amounts with tax; not while amounts are hidden</translation>
    </message>
    <message>
        <source>最末期间</source>
        <translation>Last period</translation>
    </message>
    <message>
        <source>最近打开(&amp;R)</source>
        <translation>&amp;Recently opened</translation>
    </message>
    <message>
        <source>有分类的供应商</source>
        <translation>suppliers with a class</translation>
    </message>
    <message>
        <source>有分类的客户</source>
        <translation>customers with a class</translation>
    </message>
    <message>
        <source>有引号没有配对，%L1 行无法读取，第一处在第 %L2 行，没有写入任何内容：请改正后再导入。</source>
        <translation>Quotes do not match, %L1 rows cannot be read, the first one at row %L2, and nothing was written: mend that and import again.</translation>
    </message>
    <message>
        <source>期初数量</source>
        <translation>Opening quantity</translation>
    </message>
    <message>
        <source>期初累计数量</source>
        <translation>Quantity so far, before</translation>
    </message>
    <message>
        <source>期初累计金额</source>
        <translation>Amount so far, before</translation>
    </message>
    <message>
        <source>期初金额</source>
        <translation>Opening amount</translation>
    </message>
    <message>
        <source>期末数量</source>
        <translation>Closing quantity</translation>
    </message>
    <message>
        <source>期末累计数量</source>
        <translation>Quantity so far, after</translation>
    </message>
    <message>
        <source>期末累计金额</source>
        <translation>Amount so far, after</translation>
    </message>
    <message>
        <source>期末金额</source>
        <translation>Closing amount</translation>
    </message>
    <message>
        <source>期间</source>
        <translation>Period</translation>
    </message>
    <message>
        <source>期间 2025-03、日期 2025-03-15、季度 2025Q1 或年 2025；按 Enter 显示</source>
        <translation>Period 2025-03, date 2025-03-15, quarter 2025Q1 or year 2025; Enter shows it</translation>
    </message>
    <message>
        <source>期间汇总</source>
        <translation>Summary of periods</translation>
    </message>
    <message>
        <source>期间汇总(&amp;M)</source>
        <translation>Su&amp;mmary of periods</translation>
    </message>
    <message>
        <source>期限</source>
        <translation>Term</translation>
    </message>
    <message>
        <source>未列入 %1</source>
        <translation>Not listed: %1</translation>
    </message>
    <message>
        <source>未列入 %1、%2</source>
        <translation>Not listed: %1 and %2</translation>
    </message>
    <message>
        <source>末页</source>
        <translation>Last</translation>
    </message>
    <message>
        <source>本台账列出%1。</source>
        <translation>This journal lists %1.</translation>
    </message>
    <message>
        <source>本台账列出%1，没有列入 %2。</source>
        <translation>This journal lists %1, without %2.</translation>
    </message>
    <message>
        <source>本台账列出%1，没有列入其他 %2。</source>
        <translation>This journal lists %1, without %2 more.</translation>
    </message>
    <message>
        <source>本台账列出%1，没有列入其他 %2，也没有列入 %3。</source>
        <translation>This journal lists %1, without %2 more, and without %3.</translation>
    </message>
    <message>
        <source>本季度</source>
        <translation>This quarter</translation>
    </message>
    <message>
        <source>本年</source>
        <translation>This year</translation>
    </message>
    <message>
        <source>本月</source>
        <translation>This month</translation>
    </message>
    <message>
        <source>本程序编译时没有绘图库 PLplot，不能作图：请安装 libplplot-dev 后重新编译。</source>
        <translation>This program was built without the plotting library PLplot, so nothing can be drawn: install libplplot-dev and build it again.</translation>
    </message>
    <message>
        <source>本行第一列、最后一列</source>
        <translation>First or last column of the row</translation>
    </message>
    <message>
        <source>来源入库(&amp;S)</source>
        <translation>&amp;Source receipt</translation>
    </message>
    <message>
        <source>查找(&amp;D)</source>
        <translation>Find &amp;what</translation>
    </message>
    <message>
        <source>查找(&amp;F)</source>
        <translation>&amp;Find</translation>
    </message>
    <message>
        <source>查找上一个(&amp;R)</source>
        <translation>Find p&amp;revious</translation>
    </message>
    <message>
        <source>查找下一个(&amp;N)</source>
        <translation>Find &amp;next</translation>
    </message>
    <message>
        <source>查找结果</source>
        <translation>Hits</translation>
    </message>
    <message>
        <source>查看(&amp;V)</source>
        <translation>&amp;View</translation>
    </message>
    <message>
        <source>查看单据 — %1</source>
        <translation>Bill — %1</translation>
    </message>
    <message>
        <source>查看单据(&amp;D)...</source>
        <translation>Show the bi&amp;ll...</translation>
    </message>
    <message>
        <source>横向</source>
        <translation>Landscape</translation>
    </message>
    <message>
        <source>正在写第 %1 页，共 %2 页</source>
        <translation>Writing page %1 of %2</translation>
    </message>
    <message>
        <source>正在导入...</source>
        <translation>Importing...</translation>
    </message>
    <message>
        <source>正在排版…</source>
        <translation>Laying out the pages…</translation>
    </message>
    <message>
        <source>正在读取……</source>
        <translation>Reading…</translation>
    </message>
    <message>
        <source>正在读取……已读 %L1 行</source>
        <translation>Reading… %L1 rows so far</translation>
    </message>
    <message>
        <source>正在读取：请等它完成，或先取消（Esc）。</source>
        <translation>Something is being read: wait until it is done, or cancel it first (Esc).</translation>
    </message>
    <message>
        <source>正数为(&amp;R)</source>
        <translation>Positive numbers a&amp;re</translation>
    </message>
    <message>
        <source>没有一行可以导入，没有写入任何内容：请核对各列的含义、分隔符和编码。</source>
        <translation>No row can be imported, and nothing was written: check the meaning of the columns, the delimiter and the encoding.</translation>
    </message>
    <message>
        <source>没有写入的权限；请换一个文件夹</source>
        <translation>it may not be written; choose another folder</translation>
    </message>
    <message>
        <source>没有可画的行</source>
        <translation>No lines to draw</translation>
    </message>
    <message>
        <source>没有完成</source>
        <translation>Not done</translation>
    </message>
    <message>
        <source>没有找到</source>
        <translation>Nothing found</translation>
    </message>
    <message>
        <source>没有找到：%1</source>
        <translation>Nothing found: %1</translation>
    </message>
    <message>
        <source>没有这个文件夹；请换一个文件夹</source>
        <translation>there is no such folder; choose another one</translation>
    </message>
    <message>
        <source>没有选中单元格：请先点一下要复制的那一格。</source>
        <translation>No cell is selected: click the one to be copied first.</translation>
    </message>
    <message>
        <source>清除(&amp;C)</source>
        <translation>&amp;Forget</translation>
    </message>
    <message>
        <source>清除所有库存的列布局、折叠的会计期、区间、阅读位置、最近打开的文件和窗口位置？库存数据不受影响。</source>
        <translation>Forget the columns, closed periods, ranges and places of reading of all inventories, the files that were opened recently, and the place of the window? Inventories are not changed.</translation>
    </message>
    <message>
        <source>清除记住的设置</source>
        <translation>Forget what is remembered</translation>
    </message>
    <message>
        <source>清除记住的设置(&amp;M)...</source>
        <translation>Forget what is re&amp;membered...</translation>
    </message>
    <message>
        <source>点（1,234.56）</source>
        <translation>Point (1,234.56)</translation>
    </message>
    <message>
        <source>生产日期</source>
        <translation>Produced on</translation>
    </message>
    <message>
        <source>画面太大，做不成图片；请缩小窗口后再试。</source>
        <translation>The view is too large for a picture; make the window smaller and try again.</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>磁盘已满或出错；请换一个磁盘</source>
        <translation>the disk is full or fails; choose another one</translation>
    </message>
    <message>
        <source>磁盘已满；请换一个磁盘，或腾出空间</source>
        <translation>the disk is full; choose another one or make room</translation>
    </message>
    <message>
        <source>移到相邻的单元格；加 Shift 选择</source>
        <translation>To the neighbouring cell; with Shift selects</translation>
    </message>
    <message>
        <source>税率</source>
        <translation>Tax rate</translation>
    </message>
    <message>
        <source>税额</source>
        <translation>Tax</translation>
    </message>
    <message>
        <source>税额(&amp;T)</source>
        <translation>&amp;Tax</translation>
    </message>
    <message>
        <source>竖线</source>
        <translation>Bar</translation>
    </message>
    <message>
        <source>第 %1 列</source>
        <translation>Column %1</translation>
    </message>
    <message>
        <source>第 %1 页</source>
        <translation>Page %1</translation>
    </message>
    <message>
        <source>第 %1 页，共 %2 页</source>
        <translation>Page %1 of %2</translation>
    </message>
    <message>
        <source>第 %L1 条，共 %L2 条</source>
        <translation>%L1 of %L2</translation>
    </message>
    <message>
        <source>纵向</source>
        <translation>Portrait</translation>
    </message>
    <message>
        <source>纸张(&amp;S)：</source>
        <translation>Paper &amp;size:</translation>
    </message>
    <message>
        <source>经手人</source>
        <translation>Handled by</translation>
    </message>
    <message>
        <source>结存数量和单价随时间的变化；按左右键移到前一行或后一行，Enter 回到台账</source>
        <translation>Stock and price in the course of time; Left and Right go to the line before or after, Enter back to the journal</translation>
    </message>
    <message>
        <source>统计</source>
        <translation>Statistics</translation>
    </message>
    <message>
        <source>统计(&amp;S)...</source>
        <translation>&amp;Statistics...</translation>
    </message>
    <message>
        <source>编号</source>
        <translation>Number</translation>
    </message>
    <message>
        <source>编号、名称、规格、简码、条码……的几个词</source>
        <translation>Words of the number, name, model, short code, bar code…</translation>
    </message>
    <message>
        <source>编码 %1</source>
        <translation>Encoding %1</translation>
    </message>
    <message>
        <source>编码(&amp;E)</source>
        <translation>&amp;Encoding</translation>
    </message>
    <message>
        <source>编辑(&amp;E)</source>
        <translation>&amp;Edit</translation>
    </message>
    <message>
        <source>缩小</source>
        <translation>Zoom out</translation>
    </message>
    <message>
        <source>缩小(&amp;O)</source>
        <translation>Zoom &amp;out</translation>
    </message>
    <message>
        <source>缩放、横向滚动</source>
        <translation>Zoom, scroll sideways</translation>
    </message>
    <message>
        <source>缩放到一页宽</source>
        <translation>Fit to the width of one page</translation>
    </message>
    <message>
        <source>自动识别</source>
        <translation>Find out</translation>
    </message>
    <message>
        <source>自选</source>
        <translation>Own choice</translation>
    </message>
    <message>
        <source>至%1</source>
        <translation>to %1</translation>
    </message>
    <message>
        <source>行</source>
        <translation>Row</translation>
    </message>
    <message>
        <source>表格 (*.csv *.tsv *.txt *.xlsx *.csv.gz);;所有文件 (*)</source>
        <translation>Tables (*.csv *.tsv *.txt *.xlsx *.csv.gz);;All files (*)</translation>
    </message>
    <message>
        <source>规格</source>
        <translation>Model</translation>
    </message>
    <message>
        <source>计数 %L1　求和 %2　平均 %3　最小 %4　最大 %5</source>
        <translation>Count %L1　Sum %2　Average %3　Least %4　Greatest %5</translation>
    </message>
    <message>
        <source>该商品的台账(&amp;J)</source>
        <translation>&amp;Journal of the product</translation>
    </message>
    <message>
        <source>该行的商品台账(&amp;P)</source>
        <translation>&amp;Product journal of the row</translation>
    </message>
    <message>
        <source>该行的往来单位台账(&amp;U)</source>
        <translation>Partner jo&amp;urnal of the row</translation>
    </message>
    <message>
        <source>该行的项目台账(&amp;J)</source>
        <translation>Pro&amp;ject journal of the row</translation>
    </message>
    <message>
        <source>语言 / Language(&amp;G)</source>
        <translation>Language / 语言 (&amp;G)</translation>
    </message>
    <message>
        <source>请选定%1所在的列；整行都在一列中时，请改选分隔符。</source>
        <translation>Choose the column of %1; where the whole row is in one column, choose another delimiter.</translation>
    </message>
    <message>
        <source>读取的进度</source>
        <translation>Progress of reading</translation>
    </message>
    <message>
        <source>调拨的另一方(&amp;T)</source>
        <translation>Other side of the &amp;transfer</translation>
    </message>
    <message>
        <source>货位</source>
        <translation>Place</translation>
    </message>
    <message>
        <source>走势图</source>
        <translation>Graph</translation>
    </message>
    <message>
        <source>数量右上角有这样圆点的行，记录了库存来源。</source>
        <translation>Lines with such a dot at the top right of the quantity say where their stock came from.</translation>
    </message>
    <message>
        <source>走势图(&amp;G)</source>
        <translation>&amp;Graph</translation>
    </message>
    <message>
        <source>走势图.png</source>
        <translation>graph.png</translation>
    </message>
    <message>
        <source>跟随系统(&amp;S)</source>
        <translation>As the &amp;system</translation>
    </message>
    <message>
        <source>转到(&amp;G)</source>
        <translation>&amp;Go</translation>
    </message>
    <message>
        <source>转到台账</source>
        <translation>Go to a journal</translation>
    </message>
    <message>
        <source>转到台账(&amp;K)...</source>
        <translation>Go to &amp;a journal...</translation>
    </message>
    <message>
        <source>转到所选行的商品台账（Enter）；之后可以返回这张单据</source>
        <translation>Goes to the journal of the selected line's product (Enter); you can return to this bill afterwards</translation>
    </message>
    <message>
        <source>转到页</source>
        <translation>Go to page</translation>
    </message>
    <message>
        <source>载入(&amp;L)</source>
        <translation>&amp;Load</translation>
    </message>
    <message>
        <source>载入台账（Enter 或 F5）</source>
        <translation>Loads the journal (Enter or F5)</translation>
    </message>
    <message>
        <source>输入几个词查找；Enter 载入，Esc 还原</source>
        <translation>Words search; Enter loads, Esc restores</translation>
    </message>
    <message>
        <source>输出</source>
        <translation>Output</translation>
    </message>
    <message>
        <source>返回单据(&amp;Z)</source>
        <translation>Bac&amp;k to the bill</translation>
    </message>
    <message>
        <source>还没有载入台账，没有内容可以输出；请先选择并载入一个台账。</source>
        <translation>There is no journal to write yet; choose and load one first.</translation>
    </message>
    <message>
        <source>这一行不在区间（%1）内，现在显示全部。</source>
        <translation>The row is outside the range (%1); now all rows are shown.</translation>
    </message>
    <message>
        <source>这一行不属于任何单据。</source>
        <translation>This row belongs to no bill.</translation>
    </message>
    <message>
        <source>这一行不是调拨单。</source>
        <translation>This row is no transfer.</translation>
    </message>
    <message>
        <source>这一行没有商品。</source>
        <translation>This row has no product.</translation>
    </message>
    <message>
        <source>这一行没有往来单位。</source>
        <translation>This row has no partner.</translation>
    </message>
    <message>
        <source>这一行没有记录库存来源。</source>
        <translation>This row does not say where its stock came from.</translation>
    </message>
    <message>
        <source>这一行没有项目。</source>
        <translation>This row has no project.</translation>
    </message>
    <message>
        <source>这一行的库存来自期初结存，没有入库单。</source>
        <translation>The stock of this row comes from the opening balance; it has no receipt.</translation>
    </message>
    <message>
        <source>这个磁盘是只读的；请换一个文件夹</source>
        <translation>the disk can only be read; choose another folder</translation>
    </message>
    <message>
        <source>退出(&amp;X)</source>
        <translation>E&amp;xit</translation>
    </message>
    <message>
        <source>适应内容(&amp;W)</source>
        <translation>F&amp;it to contents</translation>
    </message>
    <message>
        <source>选中的内容超过 %L1 格，剪贴板上只有纯文本。</source>
        <translation>The selection has more than %L1 cells; the clipboard has plain text alone.</translation>
    </message>
    <message>
        <source>选择区间(&amp;R)...</source>
        <translation>Choose a &amp;range...</translation>
    </message>
    <message>
        <source>选择整行、整列</source>
        <translation>Select whole rows or columns</translation>
    </message>
    <message>
        <source>选项(&amp;M)</source>
        <translation>&amp;More</translation>
    </message>
    <message>
        <source>逗号</source>
        <translation>Comma</translation>
    </message>
    <message>
        <source>逗号（1.234,56）</source>
        <translation>Comma (1.234,56)</translation>
    </message>
    <message>
        <source>通配符(&amp;I)</source>
        <translation>W&amp;ildcards</translation>
    </message>
    <message>
        <source>通配符有误</source>
        <translation>The pattern is wrong</translation>
    </message>
    <message>
        <source>重做</source>
        <translation>Redo</translation>
    </message>
    <message>
        <source>重做列布局(&amp;Y)</source>
        <translation>Re&amp;do the change of columns</translation>
    </message>
    <message>
        <source>重新载入(&amp;O)</source>
        <translation>Rel&amp;oad</translation>
    </message>
    <message>
        <source>重试(&amp;Y)</source>
        <translation>Tr&amp;y again</translation>
    </message>
    <message>
        <source>金额</source>
        <translation>Amount</translation>
    </message>
    <message>
        <source>问题</source>
        <translation>Problem</translation>
    </message>
    <message>
        <source>隐藏当前列(&amp;H)</source>
        <translation>&amp;Hide the current column</translation>
    </message>
    <message>
        <source>隐藏金额(&amp;A)</source>
        <translation>Hide &amp;amounts</translation>
    </message>
    <message>
        <source>页宽</source>
        <translation>Page width</translation>
    </message>
    <message>
        <source>页码</source>
        <translation>Page number</translation>
    </message>
    <message>
        <source>页面设置</source>
        <translation>Page set-up</translation>
    </message>
    <message>
        <source>页面设置(&amp;U)...</source>
        <translation>Page set-&amp;up...</translation>
    </message>
    <message>
        <source>页首写承前页，页末写过次页(&amp;C)</source>
        <translation>Amounts &amp;carried at the edges of pages</translation>
    </message>
    <message>
        <source>项目</source>
        <translation>Project</translation>
    </message>
    <message>
        <source>项目(&amp;S)</source>
        <translation>Project (&amp;S)</translation>
    </message>
    <message>
        <source>项目台账</source>
        <translation>Project journal</translation>
    </message>
    <message>
        <source>预览</source>
        <translation>Preview</translation>
    </message>
    <message>
        <source>首页</source>
        <translation>First</translation>
    </message>
    <message>
        <source>默认格式(&amp;D)</source>
        <translation>&amp;Default layout</translation>
    </message>
    <message>
        <source>默认格式(&amp;F)</source>
        <translation>De&amp;fault layout</translation>
    </message>
    <message>
        <source>（无）</source>
        <translation>(none)</translation>
    </message>
    <message>
        <source>（未选择）</source>
        <translation>(none chosen)</translation>
    </message>
    <message>
        <source>（没有编号 %1）</source>
        <translation>(there is no number %1)</translation>
    </message>
    <message>
        <source>（部分）</source>
        <translation>(part)</translation>
    </message>
    <message>
        <source>，可导入 %L1 行</source>
        <translation>, %L1 can be imported</translation>
    </message>
    <message>
        <source>，%L1 行有无法识别的字符（请核对编码）</source>
        <translation>, %L1 have characters that cannot be read (check the encoding)</translation>
    </message>
    <message>
        <source>，将跳过 %L1 行（%2）</source>
        <translation>, %L1 would be skipped (%2)</translation>
    </message>
    <message>
        <source>，跳过 %L1 行（%2）</source>
        <translation>, %L1 skipped (%2)</translation>
    </message>
    <message>
        <source>／ %1 页</source>
        <translation>of %1</translation>
    </message>
    <message>
        <source>；</source>
        <translation>; </translation>
    </message>
    <message>
        <source>、</source>
        <translation>, </translation>
    </message>
    <message>
        <source>地方太小，画不下：请把走势图拉大</source>
        <translation>Too little room for the graph: make it larger</translation>
    </message>
</context>
</TS>
