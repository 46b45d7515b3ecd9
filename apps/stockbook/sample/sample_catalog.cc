// SPDX-License-Identifier: MIT
#include "stockbook/sample/sample_catalog.h"

#include <array>

#include "base/digits.h"
#include "base/text.h"

namespace stockbook::app {
namespace {

// Products of one kind, which differ in size and, step by step, in price.
struct Family {
  std::string_view class_code;
  std::string_view name;
  std::string_view standard;
  std::string_view unit;
  std::string_view unit2;
  int64_t per_package_thousandths;
  bool weighed;
  int64_t price_units;  // 1/10,000 of the first size
  int64_t usual_issue;
  std::string_view short_code;
  std::string_view sizes;
};

constexpr Family kFamilies[] = {
    {"010101", "六角螺栓", "GB/T 5783", "千克", "件", 25000, true, 78500, 60, "LJLS",
     "M8×30|M6×20|M8×25|M10×40|M12×50|M16×60|M20×80|M24×100"},
    {"010102", "内六角圆柱头螺钉", "GB/T 70.1", "百个", "盒", 5000, false, 186000, 12, "NLJLD",
     "M4×12|M5×16|M6×20|M8×25|M10×30|M12×40"},
    {"010102", "自攻自钻螺钉", "GB/T 15856.1", "百个", "盒", 10000, false, 82000, 20, "ZGLD",
     "ST4.2×13|ST4.2×19|ST4.8×25|ST5.5×32|ST6.3×50"},
    {"010201", "六角螺母", "GB/T 6170", "千克", "件", 25000, true, 91200, 40, "LJLM", "M6|M8|M10|M12|M16|M20|M24"},
    {"010202", "平垫圈", "GB/T 97.1", "千克", "件", 20000, true, 86500, 25, "PDQ", "6|8|10|12|16|20|24"},
    {"010202", "弹簧垫圈", "GB/T 93", "千克", "件", 20000, true, 102300, 18, "THDQ", "6|8|10|12|16|20"},
    {"010301", "膨胀螺栓", "JB/ZQ 4763", "套", "盒", 50000, false, 12600, 120, "PZLS",
     "M6×60|M8×80|M10×100|M12×120|M16×150"},
    {"010302", "抽芯铆钉", "GB/T 12618", "百个", "盒", 10000, false, 46000, 15, "CXMD", "3.2×8|4×10|4×13|4.8×16|5×20"},
    {"020101", "铜闸阀", "Z15W-16T", "个", "箱", 20000, false, 385000, 8, "TZF", "DN15|DN20|DN25|DN32|DN40|DN50"},
    {"020101", "不锈钢球阀", "Q11F-16P", "个", "箱", 24000, false, 428000, 8, "QF", "DN15|DN20|DN25|DN32|DN40|DN50"},
    {"020102", "法兰蝶阀", "D371X-16", "台", "", 0, false, 2160000, 2, "DF", "DN50|DN80|DN100|DN150|DN200"},
    {"020201", "热镀锌钢管", "GB/T 3091", "米", "根", 6000, false, 98500, 90, "DXGG",
     "DN15×2.8|DN20×2.8|DN25×3.2|DN32×3.5|DN40×3.5|DN50×3.8|DN80×4.0|DN100×4.0"},
    {"020201", "PPR冷热水管", "GB/T 18742.2", "米", "根", 4000, false, 46200, 120, "PPRG",
     "dn20×2.8|dn25×3.5|dn32×4.4|dn40×5.5|dn50×6.9"},
    {"020202", "可锻铸铁弯头", "GB/T 3287", "个", "箱", 100000, false, 23500, 60, "WT",
     "DN15|DN20|DN25|DN32|DN40|DN50"},
    {"020202", "可锻铸铁三通", "GB/T 3287", "个", "箱", 80000, false, 31800, 40, "ST", "DN15|DN20|DN25|DN32|DN40|DN50"},
    {"030101", "聚氯乙烯绝缘电线", "GB/T 5023.3 BV", "米", "卷", 100000, false, 11350, 300, "BVX",
     "1.5mm²|2.5mm²|4mm²|6mm²|10mm²|16mm²"},
    {"030102", "橡套软电缆", "GB/T 5013.4 YZ", "米", "卷", 100000, false, 68200, 50, "YZX",
     "3×1.5|3×2.5|3×4+1×2.5|3×6+1×4"},
    {"030201", "墙壁开关", "GB/T 16915.1", "只", "箱", 100000, false, 86000, 30, "QBKG",
     "一开单控|二开单控|三开单控|一开双控"},
    {"030202", "小型断路器", "GB/T 10963.1", "只", "盒", 12000, false, 168500, 12, "DLQ",
     "1P C16|1P C20|1P C32|2P C32|3P C63"},
    {"040101", "活动扳手", "GB/T 4440", "把", "箱", 24000, false, 215000, 5, "HDBS", "150mm|200mm|250mm|300mm|375mm"},
    {"040102", "钢丝钳", "GB/T 6295.1", "把", "箱", 36000, false, 248000, 6, "GSQ", "160mm|180mm|200mm"},
    {"040201", "角向磨光机", "GB/T 3883.3", "台", "箱", 6000, false, 1985000, 2, "MGJ", "100mm|125mm|150mm"},
    {"040202", "树脂切割砂轮", "GB/T 2485", "片", "箱", 200000, false, 19500, 80, "QGP",
     "105×1.2|125×1.2|180×3|350×3.2|400×3.2"},
    {"050101", "等边角钢", "GB/T 706", "吨", "根", 22, true, 38600000, 2, "JG", "30×3|40×4|50×5|63×6|75×7"},
    {"050102", "热轧钢板", "GB/T 709", "吨", "张", 212, true, 39800000, 2, "GB",
     "3×1500×6000|5×1500×6000|8×1500×6000|10×1800×8000"},
    {"060101", "中性硅酮密封胶", "GB/T 14683", "支", "箱", 24000, false, 96500, 36, "MFJ",
     "300ml 透明|300ml 瓷白|300ml 黑"},
    {"060102", "醇酸防锈漆", "HG/T 2009", "桶", "", 0, false, 1680000, 3, "FXQ", "18kg 铁红|18kg 灰"},
    {"060103", "电焊条", "GB/T 5117 E4303", "千克", "箱", 20000, true, 66800, 40, "DHT", "φ2.5|φ3.2|φ4.0|φ5.0"},
};

constexpr SampleClass kProductClasses[] = {
    {"01", "紧固件"},       {"0101", "螺栓螺钉"},   {"010101", "外六角螺栓"}, {"010102", "螺钉"},
    {"0102", "螺母垫圈"},   {"010201", "螺母"},     {"010202", "垫圈"},       {"0103", "锚栓铆钉"},
    {"010301", "锚栓"},     {"010302", "铆钉"},     {"02", "管道材料"},       {"0201", "阀门"},
    {"020101", "螺纹阀门"}, {"020102", "法兰阀门"}, {"0202", "管材管件"},     {"020201", "管材"},
    {"020202", "管件"},     {"03", "电工材料"},     {"0301", "电线电缆"},     {"030101", "电线"},
    {"030102", "电缆"},     {"0302", "低压电器"},   {"030201", "开关插座"},   {"030202", "断路器"},
    {"04", "工具"},         {"0401", "手动工具"},   {"040101", "扳手"},       {"040102", "钳类"},
    {"0402", "电动工具"},   {"040201", "磨光机"},   {"040202", "砂轮切片"},   {"05", "钢材"},
    {"0501", "型材板材"},   {"050101", "角钢"},     {"050102", "钢板"},       {"06", "化工焊材"},
    {"0601", "胶漆焊材"},   {"060101", "密封胶"},   {"060102", "油漆"},       {"060103", "焊材"},
};

constexpr SampleClass kSupplierClasses[] = {
    {"01", "生产厂家"},   {"0101", "华东厂家"},   {"010101", "浙江厂家"}, {"010102", "江苏厂家"},
    {"0102", "华北厂家"}, {"010201", "河北厂家"}, {"02", "经销商"},       {"0201", "本地经销商"},
};

constexpr SampleClass kCustomerClasses[] = {
    {"01", "建筑单位"}, {"0101", "总包单位"}, {"010101", "房建总包"}, {"010102", "市政总包"}, {"0102", "安装单位"},
    {"02", "制造企业"}, {"0201", "机械制造"}, {"0202", "电气制造"},   {"03", "门店零售"},     {"0301", "五金门店"},
};

constexpr SampleClass kProjectClasses[] = {
    {"01", "房建工程"}, {"0101", "住宅"},     {"0102", "公共建筑"},
    {"02", "市政工程"}, {"0201", "道路桥梁"}, {"0202", "水处理"},
};

constexpr std::string_view kDepotNames[] = {"总库", "紧固件库", "管材库", "城东门市部", "城西门市部", "工地周转库"};

// The places and names that the names of parties are combined from.
constexpr std::array<std::string_view, 8> kTowns{"海宁", "永康", "温岭", "丹阳", "兴化", "永年", "沧县", "江北"};
constexpr std::array<std::string_view, 8> kTownClasses{"010101", "010101", "010101", "010102",
                                                       "010102", "010201", "010201", "0201"};
constexpr std::array<std::string_view, 3> kSupplierWords{"恒固", "鑫达", "瑞丰"};
constexpr std::array<std::string_view, 3> kSupplierKinds{"标准件厂", "五金制品有限公司", "管业有限公司"};
constexpr std::array<std::string_view, 8> kCustomerWords{"宏远", "中拓", "金桥", "广厦",
                                                         "长青", "安顺", "东升", "立新"};
struct CustomerKind {
  std::string_view name;
  std::string_view class_code;
};
constexpr std::array<CustomerKind, 6> kCustomerKinds{{{"建筑工程有限公司", "010101"},
                                                      {"市政工程有限公司", "010102"},
                                                      {"设备安装有限公司", "0102"},
                                                      {"机械有限公司", "0201"},
                                                      {"电气有限公司", "0202"},
                                                      {"五金商行", "0301"}}};
struct ProjectName {
  std::string_view name;
  std::string_view class_code;
};
constexpr ProjectName kProjectNames[] = {
    {"滨江花园一期", "0101"},   {"滨江花园二期", "0101"},       {"梧桐里小区", "0101"},   {"翠湖安置房", "0101"},
    {"实验小学综合楼", "0102"}, {"第三人民医院门诊楼", "0102"}, {"文化中心", "0102"},     {"体育馆改造", "0102"},
    {"解放路拓宽", "0201"},     {"南门大桥加固", "0201"},       {"环城东路管网", "0201"}, {"高新区支路", "0201"},
    {"城南污水处理厂", "0202"}, {"北郊自来水厂", "0202"},       {"工业园泵站", "0202"},   {"老城雨污分流", "0202"},
};

constexpr std::string_view kClerks[] = {"陈晓燕", "刘芳", "赵敏", "孙丽华"};
constexpr std::string_view kAuditors[] = {"周建平", "吴秀珍"};
constexpr std::string_view kHandlers[] = {"王志强", "李国庆", "张伟", "黄海涛", "徐明", "朱军"};
constexpr std::string_view kDrivers[] = {"马师傅", "林师傅", "何师傅", "郭师傅", "罗师傅", "高师傅", "谢师傅"};
constexpr std::string_view kPackings[] = {"纸箱", "编织袋", "木托盘", "铁桶", "捆扎", "散装"};
constexpr std::string_view kTerms[] = {"6个月", "12个月", "24个月", "36个月"};

SampleProduct ProductOf(const Family& family, std::string_view size, int64_t place_in_family, int64_t id) {
  SampleProduct product;
  product.id = id;
  product.name = family.name;
  product.number = std::string(family.class_code) + "-" + base::ZeroPadded(place_in_family + 1, 2);
  product.size = size;
  product.standard = family.standard;
  product.unit = family.unit;
  product.unit2 = family.unit2;
  product.class_code = family.class_code;
  product.place = std::string(1, static_cast<char>('A' + (id - 1) / 24 % 8)) + "-" +
                  base::ZeroPadded((id - 1) % 24 + 1, 2) + "-" + base::ZeroPadded(id % 5 + 1, 2);
  product.short_code = family.short_code;
  product.barcode = "69" + base::ZeroPadded(30'000'000'000 + id * 7919, 11);
  product.per_package = Quantity::FromThousandths(family.per_package_thousandths);
  product.weighed = family.weighed;
  // Each size costs about a twelfth more than the one before it; whole cents.
  int64_t price = family.price_units;
  for (int64_t step = 0; step < place_in_family; ++step) price += price / 12;
  product.price = base::Money::FromUnits((price + 50) / 100 * 100);
  product.usual_issue = family.usual_issue;
  return product;
}

}  // namespace

std::vector<SampleProduct> SampleProducts() {
  std::vector<SampleProduct> products;
  for (const Family& family : kFamilies) {
    int64_t place = 0;
    for (const std::string_view size : base::Split(family.sizes, '|')) {
      products.push_back(ProductOf(family, size, place++, static_cast<int64_t>(products.size()) + 1));
    }
  }
  return products;
}

std::vector<SampleParty> SampleSuppliers() {
  std::vector<SampleParty> suppliers;
  for (size_t word = 0; word < kSupplierWords.size(); ++word) {
    for (size_t town = 0; town < kTowns.size(); ++town) {
      const std::string_view kind =
          town + 1 == kTowns.size() ? "五金批发部" : kSupplierKinds[(town + word) % kSupplierKinds.size()];
      suppliers.push_back({static_cast<int64_t>(suppliers.size()) + 1,
                           std::string(kTowns[town]).append(kSupplierWords[word]).append(kind),
                           {},
                           kTownClasses[town]});
    }
  }
  return suppliers;
}

std::vector<SampleParty> SampleCustomers() {
  std::vector<SampleParty> customers;
  for (const CustomerKind& kind : kCustomerKinds) {
    for (const std::string_view word : kCustomerWords) {
      customers.push_back(
          {static_cast<int64_t>(customers.size()) + 1, std::string(word).append(kind.name), {}, kind.class_code});
    }
  }
  return customers;
}

std::vector<SampleParty> SampleProjects(int first_year) {
  std::vector<SampleParty> projects;
  for (const ProjectName& project : kProjectNames) {
    const auto id = static_cast<int64_t>(projects.size()) + 1;
    projects.push_back({id, std::string(project.name),
                        "XM" + std::to_string(first_year) + "-" + base::ZeroPadded(id, 3), project.class_code});
  }
  return projects;
}

std::span<const std::string_view> SampleDepots() { return kDepotNames; }
std::span<const SampleClass> SampleProductClasses() { return kProductClasses; }
std::span<const SampleClass> SampleSupplierClasses() { return kSupplierClasses; }
std::span<const SampleClass> SampleCustomerClasses() { return kCustomerClasses; }
std::span<const SampleClass> SampleProjectClasses() { return kProjectClasses; }
std::span<const std::string_view> SampleClerks() { return kClerks; }
std::span<const std::string_view> SampleAuditors() { return kAuditors; }
std::span<const std::string_view> SampleHandlers() { return kHandlers; }
std::span<const std::string_view> SampleDrivers() { return kDrivers; }
std::span<const std::string_view> SamplePackings() { return kPackings; }
std::span<const std::string_view> SampleTerms() { return kTerms; }

}  // namespace stockbook::app
