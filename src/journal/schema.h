// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

// Names of the host database that are used outside of the fixed statement texts. They are the host's own and are sent
// as they stand.
namespace stockbook::journal::schema {

// Bills: a header table and a lines table for receipts, and the same for issues.
inline constexpr std::string_view kReceiptHeaders = "入库目录";
inline constexpr std::string_view kReceiptLines = "入库记录";
inline constexpr std::string_view kIssueHeaders = "出库目录";
inline constexpr std::string_view kIssueLines = "出库记录";

// Masters and class trees.
inline constexpr std::string_view kDepots = "仓库设置";
inline constexpr std::string_view kSuppliers = "厂商资料";
inline constexpr std::string_view kCustomers = "客户资料";
inline constexpr std::string_view kProjects = "项目设置";
inline constexpr std::string_view kProducts = "商品资料";
inline constexpr std::string_view kProductClasses = "商品分类";
inline constexpr std::string_view kSupplierClasses = "厂商分类";
inline constexpr std::string_view kCustomerClasses = "客户分类";
inline constexpr std::string_view kProjectClasses = "项目分类";

inline constexpr std::string_view kAccPeriod = "AccPeriod";
inline constexpr std::string_view kClassCode = "ClassCode";

}  // namespace stockbook::journal::schema
