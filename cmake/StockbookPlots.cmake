# SPDX-License-Identifier: MIT
# The libraries that draw the reference host's plots, which are loaded with the first plot. Where one is missing, or plots
# are switched off, the program is built without them and says so when it is asked for a plot.

set(stockbook_with_plots FALSE)
if(STOCKBOOK_PLOTS)
  find_package(PkgConfig QUIET)
  if(PkgConfig_FOUND)
    pkg_check_modules(STOCKBOOK_PLPLOT QUIET IMPORTED_TARGET plplot)
    pkg_check_modules(STOCKBOOK_CAIRO QUIET IMPORTED_TARGET cairo)
    pkg_check_modules(STOCKBOOK_CAIRO_FILES QUIET cairo-pdf cairo-svg)
  endif()
  if(STOCKBOOK_PLPLOT_FOUND AND STOCKBOOK_CAIRO_FOUND AND STOCKBOOK_CAIRO_FILES_FOUND)
    set(stockbook_with_plots TRUE)
  endif()
endif()
if(NOT stockbook_with_plots)
  message(STATUS "The reference host is built without plots: PLplot or cairo is missing or switched off")
endif()
