// SPDX-License-Identifier: MIT
#include "journal/error_text.h"

#include <exception>
#include <new>

namespace stockbook::journal {

std::string TextOfError(std::string_view unknown) {
  try {
    throw;
  } catch (const std::bad_alloc&) {
    return "内存不足：请关闭其他程序，或缩小查询的范围，再试一次。";
  } catch (const std::exception& error) {
    return error.what();
  } catch (...) {
    return std::string(unknown);
  }
}

}  // namespace stockbook::journal
