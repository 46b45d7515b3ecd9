// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "stockbook/base/money.h"
#include "stockbook/inventory/inventory_quantity.h"

namespace stockbook::app {

// A class of products, suppliers, customers or projects; its code begins with that of the class above it.
struct SampleClass {
  std::string_view code;
  std::string_view name;
};

struct SampleProduct {
  int64_t id = 0;
  std::string_view name;
  std::string number;
  std::string_view size;      // M8×30
  std::string_view standard;  // GB/T 5783
  std::string_view unit;
  std::string_view unit2;  // empty: none
  std::string_view class_code;
  std::string place;
  std::string short_code;
  std::string barcode;
  Quantity per_package;     // units in one second unit, or 0
  bool weighed = false;     // sold by weight, so that a package holds only about per_package
  base::Money price;        // purchase price without tax
  int64_t usual_issue = 1;  // units
};

struct SampleParty {
  int64_t id = 0;
  std::string name;
  std::string number;  // of projects
  std::string_view class_code;
};

// The master records of the sample inventory, a hardware wholesaler's. They are the same for every seed. All names of
// companies and people are made up from common words.
std::vector<SampleProduct> SampleProducts();
std::vector<SampleParty> SampleSuppliers();
std::vector<SampleParty> SampleCustomers();
std::vector<SampleParty> SampleProjects(int first_year);
std::span<const std::string_view> SampleDepots();
std::span<const SampleClass> SampleProductClasses();
std::span<const SampleClass> SampleSupplierClasses();
std::span<const SampleClass> SampleCustomerClasses();
std::span<const SampleClass> SampleProjectClasses();

std::span<const std::string_view> SampleClerks();    // who enter bills
std::span<const std::string_view> SampleAuditors();  // who audit them
std::span<const std::string_view> SampleHandlers();  // who handle goods
std::span<const std::string_view> SampleDrivers();   // whom goods are handed to or taken from
std::span<const std::string_view> SamplePackings();
std::span<const std::string_view> SampleTerms();

}  // namespace stockbook::app
