// SPDX-License-Identifier: MIT
#include "databases/database_file.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <cmath>
#include <filesystem>

namespace stockbook::testing {

DatabaseFile::DatabaseFile(std::string_view file_name) {
  std::string pattern = (std::filesystem::temp_directory_path() / "stockbook-test-XXXXXX").string();
  folder_ = mkdtemp(pattern.data());
  path_ = folder_ + "/" + std::string(file_name);
  EXPECT_EQ(sqlite3_open(path_.c_str(), &handle_), SQLITE_OK);
  Run("PRAGMA synchronous=OFF");
}

DatabaseFile::~DatabaseFile() {
  sqlite3_close(handle_);
  std::error_code error;
  std::filesystem::remove_all(folder_, error);
}

void DatabaseFile::Run(const std::string& sql) {
  char* message = nullptr;
  sqlite3_exec(handle_, sql.c_str(), nullptr, nullptr, &message);
  EXPECT_EQ(message, nullptr) << message << "\n" << sql.substr(0, 500);
  sqlite3_free(message);
}

namespace {

std::string Directory(const std::string& table, const InventoryTypes& types) {
  return "CREATE TABLE " + table + "(BillID " + types.master_key + ", AccPeriod TEXT, BillDate " + types.date +
         ", 年份 INTEGER, 月份 INTEGER, 日子 INTEGER, 单据类型 TEXT, 单据编号 TEXT, 类型 TEXT, 说明 TEXT, dpID INTEGER,"
         " ksID INTEGER, pjID INTEGER, 录入员 TEXT, 录入日期 " +
         types.date + ", 审核员 TEXT, 审核日期 " + types.date + ");";
}

std::string Records(const std::string& table, const InventoryTypes& types) {
  return "CREATE TABLE " + table +
         "(RecID INTEGER PRIMARY KEY, BillID INTEGER, pdID INTEGER, dpID INTEGER, ksID INTEGER,"
         " pjID INTEGER, OtherID INTEGER, 数量 " +
         types.quantity + ", Qty2 " + types.quantity + ", 除税单价 " + types.quantity + ", 除税金额 " + types.money +
         ", 税率 " + types.quantity + ", 税额 " + types.money + ", 单价 " + types.quantity + ", 金额 " + types.money +
         ", 经手人 TEXT, 交接人 TEXT, 包装 TEXT, 货位 TEXT, 期限 TEXT, SerialNo TEXT, ProductDate " + types.date + ");";
}

std::string Balance(const std::string& table, const std::string& key, const InventoryTypes& types) {
  return "CREATE TABLE " + table + "(bnPeriod TEXT, " + key + " INTEGER, pdID INTEGER, LastPrice " +
         types.price.value_or(types.money) + ", LastQuantity " + types.quantity + ", LastQuantity2 " + types.quantity +
         ", LastAccount " + types.money + ", SumRevQuantity " + types.quantity + ", SumRevQuantity2 " + types.quantity +
         ", SumRevAccount " + types.money + ", SumIssQuantity " + types.quantity + ", SumIssQuantity2 " +
         types.quantity + ", SumIssAccount " + types.money + ");";
}

}  // namespace

void CreateInventory(DatabaseFile& file, const InventoryTypes& types) {
  file.Run(Directory("入库目录", types) + Directory("出库目录", types) + Records("入库记录", types) +
           Records("出库记录", types));
  file.Run(
      "CREATE TABLE 仓库设置(dpID " + types.master_key +
      ", 仓库名称 TEXT);"
      "CREATE TABLE 厂商资料(KSID " +
      types.master_key +
      ", 企业名称 TEXT, ClassCode TEXT);"
      "CREATE TABLE 客户资料(KSID " +
      types.master_key +
      ", 企业名称 TEXT, ClassCode TEXT);"
      "CREATE TABLE 项目设置(项目ID " +
      types.master_key +
      ", 项目名称 TEXT, 项目编号 TEXT, ClassCode TEXT);"
      "CREATE TABLE 项目分类(ClassCode TEXT, ClassName TEXT); CREATE TABLE 商品分类(ClassCode TEXT, ClassName TEXT);"
      "CREATE TABLE 厂商分类(ClassCode TEXT, ClassName TEXT); CREATE TABLE 客户分类(ClassCode TEXT, ClassName TEXT);"
      "CREATE TABLE tqAccPeriod(AccPeriod TEXT);");
  file.Run("CREATE TABLE 商品设置(pdID " + types.master_key +
           ", 商品名称 TEXT, 商品编号 TEXT, 计量单位 TEXT, 计量2 TEXT, 计价方法 INTEGER,"
           " 进位方法 INTEGER, 最低库存 REAL, 最高库存 REAL, 输入简码 TEXT, KSID INTEGER, 默认单价 REAL, 普通税率 "
           "REAL, 增值税率 REAL,"
           " 购进单价 REAL, 普购税率 REAL, 增购税率 REAL, ClassCode TEXT, 单位数量 REAL, 存放位置 TEXT, 商品条码 TEXT, "
           "生产厂家 TEXT,"
           " 备注 TEXT, 别名 TEXT, 颜色 TEXT, 重量 REAL, 定义 TEXT, 规格 TEXT, 型号 TEXT);");
  file.Run(
      "CREATE TABLE 仓库余额表(ID INTEGER PRIMARY KEY, DpID INTEGER, PdID INTEGER, AccPeriod TEXT, 年份 INTEGER, 月份 "
      "INTEGER,"
      " 上期库存单价 " +
      types.price.value_or(types.money) + ", 上期库存数量 REAL, 上期库存数量2 REAL, 上期库存金额 " + types.money +
      ", TotalRevQuantity REAL, TotalRevQuantity2 REAL, TotalRevAccount " + types.money +
      ", TotalIssQuantity REAL, TotalIssQuantity2 REAL, TotalIssAccount " + types.money + ");");
  file.Run(Balance("tqSuppBalance", "ksID", types) + Balance("tqCustBalance", "ksID", types) +
           Balance("tqProjBalance", "pjID", types));
}

void FillInventory(DatabaseFile& file) {
  file.Run(R"(
    INSERT INTO tqAccPeriod VALUES ('2004-12'),('2005-03'),('2005-02'),('2005-01');
    INSERT INTO 仓库设置 VALUES (1,'总库'),(2,'二库');
    INSERT INTO 厂商资料 VALUES (5,'宏达五金','0101'),(6,'远大工具','0102'),(9,'无名','02');
    INSERT INTO 客户资料 VALUES (7,'长城公司','01'),(8,'黄河公司','0101');
    INSERT INTO 项目设置 VALUES (3,'一期工程','P3','01'),(4,'二期工程','P4','0101');
    INSERT INTO 项目分类 VALUES ('01','土建'),('0101','土建一部');
    INSERT INTO 商品设置(pdID,商品名称,商品编号,计量单位,计量2,规格,型号,ClassCode) VALUES
      (1,'螺丝','A1','箱','个','M4','GB1','01'), (2,'扳手','A2','把','','','GB2','0101'), (3,'锤子','A3','把',NULL,NULL,NULL,'02');
    INSERT INTO 入库目录 VALUES
      (10,'2005-01','2005-01-05',2005,1,5,'采购入库','12','采购','首批',1,5,3,'张三','2005-01-05','李四','2005-01-06 08:30:00'),
      (11,'2005-03','2005-03-08',2005,3,8,'采购入库','13','采购',NULL,2,6,NULL,'张三','2005-03-08',NULL,NULL),
      (12,'2005-04','2005-04-01',2005,4,1,'采购入库','14','采购','以后',1,5,3,'张三','2005-04-01',NULL,NULL);
    INSERT INTO 出库目录 VALUES
      (20,'2005-01','2005-01-05',2005,1,5,'销售出库','7','销售','',1,7,4,'王五','2005-01-05',NULL,NULL),
      (21,'2005-02','2005-02-10',2005,2,10,'销售出库','8','销售','退补',1,8,3,'王五','2005-02-10','李四','2005-02-11');
    INSERT INTO 入库记录 VALUES
      (100,10,1,1,5,3,0,10,100,1.25,'12.5',0.17,'2.125',1.4625,'14.625','张三','李四','盒','A-1','2006','S1','2004-12-01'),
      (101,10,1,2,5,3,0,4,40,1.25,'5',0.17,'0.85',1.4625,'5.85','张三','李四','盒','A-2',NULL,NULL,NULL),
      (102,11,1,2,6,NULL,0,3,30,2,'6',0.17,'1.02',2.34,'7.02','张三',NULL,NULL,NULL,NULL,NULL,NULL),
      (103,11,2,9,6,NULL,0,1,NULL,8,'8',0,'0',8,'8',NULL,NULL,NULL,NULL,NULL,NULL,NULL),
      (104,12,1,1,5,3,0,1,10,1,'1',0,'0',1,'1',NULL,NULL,NULL,NULL,NULL,NULL,NULL);
    INSERT INTO 出库记录 VALUES
      (200,20,1,1,7,4,100,2,20,1.25,'2.5',0.17,'0.425',1.4625,'2.925','王五',NULL,NULL,NULL,NULL,NULL,NULL),
      (201,21,1,1,8,3,-55,1.5,15,1.25,'1.875',0.17,'0.3188',1.4625,'2.1938','王五',NULL,NULL,NULL,NULL,NULL,NULL),
      (202,21,2,1,8,3,0,1,NULL,9,'9',0,'0',9,'9',NULL,NULL,NULL,NULL,NULL,NULL,NULL);
    INSERT INTO 仓库余额表 VALUES
      (55,1,1,'2004-12',2004,12,'1.2',5,50,'6','1','10','1.2','2','20','2.4'),
      (56,2,1,'2004-12',2004,12,'1.4',1,10,'1.4','0','0','0','0','0','0'),
      (57,1,1,'2005-01',2005,1,'1.2',4,40,'4.8','1','10','1.2','2','20','2.4');
    INSERT INTO tqSuppBalance VALUES ('2004-12',5,1,'1.2',3,30,'3.6',7,70,'8.4',0,0,'0'),
      ('2005-01',5,1,'1.3',4,40,'5.2',8,80,'9',0,0,'0');
    INSERT INTO tqCustBalance VALUES ('2004-12',7,1,'1.2',0,0,'0',0,0,'0',6,60,'7.2');
    INSERT INTO tqProjBalance VALUES ('2004-12',3,1,'1.2',0,0,'0',2,20,'2.4',1,10,'1.2'),
      ('2005-01',3,1,'1.5',1,10,'1.2',3,30,'3.6',2,20,'2.4');
  )");
}

std::string RowText(const platform::Recordset& rows) {
  std::string text;
  for (size_t field = 0; field < rows.FieldCount(); ++field) {
    const base::Value value = rows.FieldValue(field);
    text.append(field == 0 ? "" : "|").append(value.IsNull() ? "~" : value.Text());
  }
  return text;
}

std::vector<std::string> AllRows(platform::Recordset rows) {
  std::vector<std::string> texts;
  for (; !rows.AtEnd(); rows.MoveNext()) texts.push_back(RowText(rows));
  return texts;
}

std::vector<std::string> ExactRows(platform::Recordset rows) {
  std::vector<std::string> texts;
  for (; !rows.AtEnd(); rows.MoveNext()) {
    std::string text;
    for (size_t field = 0; field < rows.FieldCount(); ++field) {
      const base::Value value = rows.FieldValue(field);
      const auto* number = value.As<double>();
      const bool whole = number != nullptr && *number == std::trunc(*number) && std::fabs(*number) < 9e15;
      const size_t kind = whole ? base::Value(int64_t{0}).variant().index() : value.variant().index();
      char exact[64] = "";
      if (number != nullptr && !whole) std::snprintf(exact, sizeof exact, "%.17g", *number);
      text += std::to_string(kind) + ":" + (exact[0] != '\0' ? std::string(exact) : value.Text()) + "|";
    }
    texts.push_back(std::move(text));
  }
  return texts;
}

}  // namespace stockbook::testing
