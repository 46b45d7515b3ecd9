// SPDX-License-Identifier: MIT
#include "journal/error_text.h"

#include <exception>
#include <new>

namespace stockbook::journal {
namespace {

// Made while there is memory.
const std::string kOutOfMemory = "内存不足：请关闭其他程序，或缩小查询的范围，再试一次。";

}  // namespace

std::string TextOfError(std::string_view unknown) {
  try {
    throw;
  } catch (const std::bad_alloc&) {
    return kOutOfMemory;
  } catch (const std::exception& error) {
    return error.what();
  } catch (...) {
    return std::string(unknown);
  }
}

const std::string& TextOfError(std::string_view unknown, std::string& room) noexcept {
  try {
    room = TextOfError(unknown);
    return room;
  } catch (...) {
    return kOutOfMemory;
  }
}

}  // namespace stockbook::journal
