' SPDX-License-Identifier: MIT
' Shows what a script can do with the control, which need not be visible for it.
'   regsvr32 tqStockbook.dll, once, as an administrator
'   cscript //nologo journal.vbs ["connection string" product]
' Without a connection the journal is empty. The last line says that nothing went wrong.
Option Explicit

Const MaterialJournal = 0

Dim book, connection, row
Set book = CreateObject("tqStockbook.Stockbook")
book.JournalType = MaterialJournal
book.QuantityFormat = "#,##0.###"
WScript.Echo "Format name: " & book.FmtName
WScript.Echo "Columns: " & book.Grid.Cols

If WScript.Arguments.Count = 2 Then
  Set connection = CreateObject("ADODB.Connection")
  connection.Open WScript.Arguments(0)
  Set book.Conn = connection
  If Not book.Load(CLng(WScript.Arguments(1))) Then
    WScript.Echo "The journal could not be loaded."
    WScript.Quit 1
  End If
  For row = 1 To book.Rows - 1
    WScript.Echo book.BillName(row) & vbTab & book.Grid.TextMatrix(row, book.Grid.ColIndex("StoQty"))
  Next
End If

' What fails has a number and a sentence.
On Error Resume Next
book.dpID = 40000
If Err.Number = 0 Then WScript.Quit 1
WScript.Echo "A depot id beyond 16 bits: error " & (Err.Number And 65535)
On Error GoTo 0

WScript.Echo "journal.vbs: done"
