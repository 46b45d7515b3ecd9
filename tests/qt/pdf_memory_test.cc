// SPDX-License-Identifier: MIT
// What becomes of a PDF where the system gives a program no more memory.
#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <new>
#include <sstream>

#include "qt/application.h"
#include "stockbook/qt/pdf_printer.h"
#include "support/sample_ledger.h"

namespace stockbook::qt {
namespace {

enum class Ending { kWritten = 0, kRefused = 1, kOtherwise = 2 };

// Address space of this process, in bytes.
rlim_t SizeNow() {
  rlim_t pages = 0;
  std::ifstream("/proc/self/statm") >> pages;
  return pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
}

class PdfWithoutMemory : public WithApplication {
 protected:
  PdfWithoutMemory() {
    testing::SampleLedger({2, 20}).Fill(sheet_);
    document_.page = QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape, QMarginsF(36, 36, 36, 36));
  }
  // Writes the sheet in a process that gets no more than so many bytes beside those it has.
  int EndIn(rlim_t bytes) {
    const pid_t child = fork();
    if (child == 0) {
      // What earlier work left in the heap is no room.
      malloc_trim(0);
      mallopt(M_MMAP_THRESHOLD, 1 << 16);
      const rlimit limit{SizeNow() + bytes, SizeNow() + bytes};
      setrlimit(RLIMIT_AS, &limit);
      Ending ending = Ending::kOtherwise;
      try {
        std::ostringstream pdf;
        if (WritePdf(sheet_, document_, pdf)) ending = Ending::kWritten;
      } catch (const std::bad_alloc&) {
        ending = Ending::kRefused;
      } catch (...) {
      }
      _exit(static_cast<int>(ending));
    }
    int status = 0;
    waitpid(child, &status, 0);
    return status;
  }

  sheet::GridSheet sheet_;
  PdfDocument document_;
};

TEST_F(PdfWithoutMemory, IsWrittenWholeOrRefused) {
#ifdef STOCKBOOK_SANITIZED
  GTEST_SKIP() << "The sanitizer needs more memory than there is to be.";
#endif
  // Fonts and settings that the toolkit reads once are there before.
  std::ostringstream first;
  ASSERT_TRUE(WritePdf(sheet_, document_, first));
  int refused = 0;
  for (rlim_t room = 0;; room += rlim_t{64} << 10) {
    const int status = EndIn(room);
    ASSERT_TRUE(WIFEXITED(status)) << "in " << room << " bytes: signal " << WTERMSIG(status);
    ASSERT_NE(WEXITSTATUS(status), static_cast<int>(Ending::kOtherwise)) << "in " << room << " bytes";
    if (WEXITSTATUS(status) == static_cast<int>(Ending::kWritten)) break;
    ++refused;
  }
  if (refused == 0) GTEST_SKIP() << "What other tests left free in this process has the room.";
}

}  // namespace
}  // namespace stockbook::qt
