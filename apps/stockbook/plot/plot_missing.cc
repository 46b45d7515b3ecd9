// SPDX-License-Identifier: MIT
// In the place of plot_drawing.cc where there is no library for it.
#include <QCoreApplication>

#include "stockbook/platform/error.h"
#include "stockbook/plot/plot_drawing.h"

namespace stockbook::app {

bool CanDrawPlots() { return false; }

const char* WhyNoPlots() {
  return QT_TRANSLATE_NOOP("stockbook", "本程序编译时没有绘图库 PLplot，不能作图：请安装 libplplot-dev 后重新编译。");
}

QImage PlotPicture(const JournalPlot& /*plot*/, const PlotPage& /*page*/, PlotLook /*look*/) { return {}; }

QByteArray PlotFile(const JournalPlot& /*plot*/, const PlotPage& /*page*/, PlotFormat /*format*/) {
  throw platform::Error("plot", WhyNoPlots());
}

}  // namespace stockbook::app
