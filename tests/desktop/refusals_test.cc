// SPDX-License-Identifier: MIT
// Files that cannot be read: each says in one sentence what is wrong, whichever way it was broken.
#include <sys/stat.h>
#include <unistd.h>

#include "desktop/desktop_fixture.h"

namespace stockbook::testing {
namespace {

using DesktopRefusals = DesktopFixture;
using platform::ErrorKind;

TEST_F(DesktopRefusals, NameWhatIsNoDesktopFile) {
  EXPECT_EQ(RefusalOf(PathOf("none.mdb")).text, "找不到数据库文件“" + PathOf("none.mdb") + "”，请检查路径");
  EXPECT_EQ(RefusalOf(PathOf("none.mdb")).kind, ErrorKind::kInputOutput);
  EXPECT_EQ(RefusalOf(PathOf("")).text, "“" + PathOf("") + "”是文件夹，不是数据库文件");
  const std::string pipe = PathOf("pipe.mdb");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(RefusalOf(pipe).text, "“" + pipe + "”是管道、设备或套接字，不是数据库文件");
  EXPECT_EQ(RefusalOf(Write("empty.mdb", "")).text, "文件“" + PathOf("empty.mdb") + "”是空的，不是桌面数据库文件");
  EXPECT_EQ(RefusalOf(Write("text.mdb", std::string(9000, 'x'))).text,
            "文件“" + PathOf("text.mdb") + "”不是桌面数据库文件（.mdb 或 .accdb），请检查路径");
  EXPECT_EQ(RefusalOf(Write("a.db", "SQLite format 3" + std::string(9000, '\0'))).text,
            "文件“" + PathOf("a.db") + "”是 SQLite 数据库，请把连接字符串的 Provider 改为 Stockbook.Embedded");
  EXPECT_EQ(RefusalOf(PathOf("a.db")).kind, ErrorKind::kDamaged);
}

TEST_F(DesktopRefusals, TellAFileThatMayNotBeRead) {
  if (geteuid() == 0) GTEST_SKIP() << "Whoever runs this test may read every file";
  const std::string path = Put(TwoColumns({u"x"}));
  ASSERT_EQ(chmod(path.c_str(), 0), 0);
  EXPECT_EQ(RefusalOf(path).text, "没有读取数据库文件“" + path + "”的权限，请检查权限，或关闭独占它的程序");
  EXPECT_EQ(RefusalOf(path).kind, ErrorKind::kInputOutput);
}

TEST_F(DesktopRefusals, AskForThePasswordAndForTheRightOne) {
  Maker maker = TwoColumns({u"x"});
  maker.SetPassword(WideBytes(u"秘密"));
  const std::string path = Put(maker);
  EXPECT_EQ(RefusalOf(path).text, "数据库文件“" + path + "”受密码保护，请在连接字符串中写明 Password");
  EXPECT_EQ(RefusalOf(path, "Password=other").text, "数据库文件“" + path + "”的密码不对，请检查连接字符串的 Password");
  EXPECT_EQ(RefusalOf(path, "Password=other").kind, ErrorKind::kInputOutput);
  EXPECT_EQ(Rows(*Open(path, "Password=秘密"), "Select name From t"), "x\n");
}

TEST_F(DesktopRefusals, TellNobodyThePasswordNorTakeItForADialect) {
  Maker maker = TwoColumns({u"x"});
  maker.SetPassword(WideBytes(u"SQL"));
  const auto connection = Open(Put(maker), "Password=SQL");
  EXPECT_EQ(connection->ConnectionString().find("SQL"), std::string::npos);
  EXPECT_EQ(Rows(*connection, "Select name & '!' As a From t"), "x!\n");
}

TEST_F(DesktopRefusals, AskForThePasswordAlsoWhereACopyIsKept) {
  Maker maker = TwoColumns({u"x"});
  maker.SetPassword(WideBytes(u"1"));
  const std::string path = Put(maker);
  Open(path, "Password=1");
  EXPECT_EQ(RefusalOf(path).text, "数据库文件“" + path + "”受密码保护，请在连接字符串中写明 Password");
}

TEST_F(DesktopRefusals, TellAnEncryptedFileAndOneThatIsTooNew) {
  std::string bytes = TwoColumns({u"x"}).Bytes();
  bytes.replace(4, 16, std::string("Standard ACE DB\0", 16));
  // The key; how the header is scrambled does not matter, as long as it is not zero.
  bytes[0x3E] = static_cast<char>(bytes[0x3E] ^ 0x55);
  EXPECT_EQ(RefusalOf(Write("a.accdb", bytes)).text,
            "数据库文件“" + PathOf("a.accdb") + "”已用密码加密，无法读取，请先在原来的程序中取消密码");
  EXPECT_EQ(RefusalOf(PathOf("a.accdb")).kind, ErrorKind::kInputOutput);
  bytes[0x14] = 9;
  EXPECT_EQ(RefusalOf(Write("b.accdb", bytes)).text,
            "数据库文件“" + PathOf("b.accdb") + "”的版本太新，无法读取，请另存为 2016 或更早的格式");
}

TEST_F(DesktopRefusals, TellAFileOfLinksAlone) {
  Maker maker;
  maker.AddLink(WideBytes(u"入库记录"));
  const std::string path = Put(maker);
  EXPECT_EQ(RefusalOf(path).text, "数据库文件“" + path + "”只有指向别处的链接表，请打开表所在的文件");
}

TEST_F(DesktopRefusals, NameTheTableThatHasLostRows) {
  Maker maker = TwoColumns({u"x", u"y"});
  maker.SetRowCount(1, 3);
  const std::string path = Put(maker);
  EXPECT_EQ(RefusalOf(path).text,
            "数据库文件“" + path + "”的表“t”已损坏或不完整，请用原来的程序压缩和修复，或从备份恢复");
  EXPECT_EQ(RefusalOf(path).kind, ErrorKind::kDamaged);
  // What a program that ended badly leaves.
  maker.SetRowCount(1, 0);
  EXPECT_EQ(Rows(*Open(Put(maker)), "Select name From t"), "x\ny\n");
}

TEST_F(DesktopRefusals, TellAMemoWhosePiecesAreARing) {
  Maker maker;
  const size_t table = maker.AddTable(WideBytes(u"t"), {{WideBytes(u"m"), Maker::kMemo}});
  const std::string field = maker.LongField(std::string(3000, 'x'), 1000);
  maker.AddRow(table, {field});
  std::string bytes = maker.Bytes();
  // The second piece leads to itself, and has nothing of its own any more.
  const size_t second = (static_cast<size_t>(static_cast<unsigned char>(field[5])) + 1) * 4096;
  bytes.replace(second + 4096 - 1004, 4, bytes.substr(second - 1004, 4));
  bytes.replace(second + 14, 2, LittleEndian(4096 - 4, 2));
  bytes.replace(second + 4096 - 4, 4, LittleEndian((second / 4096) << 8, 4));
  EXPECT_EQ(RefusalOf(Write("ring.mdb", bytes)).kind, ErrorKind::kDamaged);
}

TEST_F(DesktopRefusals, AreAllThatAByteMoreOrLessCanDo) {
  Maker maker = TwoColumns({u"螺栓", u"螺母", u"垫圈"});
  maker.AddMovedRow(1, {LittleEndian(4, 4), WideBytes(u"锚栓")});
  const std::string whole = maker.Bytes();
  // Bytes that are not padding, one at a time, and some that are.
  size_t refused = 0;
  size_t tried = 0;
  for (size_t at = 0; at < whole.size(); at += whole[at] == 0 && at % 4096 > 64 ? 401U : 3U) {
    std::string bytes = whole;
    bytes[at] = static_cast<char>(bytes[at] ^ 0xFF);
    refused += RefusalOf(Write("x.mdb", bytes), "Cache=No").text.empty() ? 0U : 1U;
    ++tried;
  }
  EXPECT_GT(refused, tried / 20);
  EXPECT_LT(refused, tried);
  for (size_t size = 0; size < whole.size(); size += 4096) {
    EXPECT_NE(RefusalOf(Write("x.mdb", whole.substr(0, size)), "Cache=No").text, "") << size;
  }
}

TEST_F(DesktopRefusals, SayWhichSettingMeansNothing) {
  const std::string path = Put(TwoColumns({u"x"}));
  EXPECT_EQ(RefusalOf(path, "Cache=maybe").text, "连接字符串的 Cache“maybe”应为 Yes 或 No，No 表示不保留转换后的副本");
  EXPECT_NE(RefusalOf(path, "Timeout=soon").text.find("Timeout"), std::string::npos);
  EXPECT_THROW(databases::OpenDesktop("Provider=Stockbook.Embedded;Data Source=" + path), platform::Error);
  EXPECT_THROW(databases::OpenDesktop("Provider=Stockbook.Desktop"), platform::Error);
}

}  // namespace
}  // namespace stockbook::testing
