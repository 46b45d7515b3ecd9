# SPDX-License-Identifier: MIT
# The library that draws the reference host's plots. Where it is missing, or switched off, the program is built without
# it and says so when it is asked for a plot. Sets stockbook_plot_libraries.

set(stockbook_plot_libraries "")
if(STOCKBOOK_PLOTS)
  find_package(PkgConfig QUIET)
  if(PkgConfig_FOUND)
    pkg_check_modules(STOCKBOOK_PLOTS_LIBRARY QUIET IMPORTED_TARGET plplot cairo cairo-pdf cairo-svg)
  endif()
endif()
if(STOCKBOOK_PLOTS AND STOCKBOOK_PLOTS_LIBRARY_FOUND)
  set(stockbook_plot_libraries PkgConfig::STOCKBOOK_PLOTS_LIBRARY)
else()
  message(STATUS "The reference host is built without plots: PLplot or cairo is missing or switched off")
endif()
