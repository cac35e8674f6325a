// Times the desktop program for the benchmarks (make bench):
//
//   vantor_gui_timing START_NS LOG RUNS
//
// START_NS is the wall clock (CLOCK_REALTIME, nanoseconds) just before this
// process was started, so that "window shown" includes loading the program
// and its libraries. Prints two lines:
//   window_shown_ms <from START_NS until the main window is exposed>
//   open_run_ms <median of RUNS File > Open runs on LOG, each to the end of the run>

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryDir>
#include <QWindow>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <vector>

#include "report/report_path.h"
#include "scripted_desktop.h"
#include "ui/display_stats.h"
#include "ui/settings.h"

namespace {

double NowNs() {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

void WaitUntilExposed(QWidget& window) {
  while (window.windowHandle() == nullptr || !window.windowHandle()->isExposed()) {
    QApplication::processEvents(QEventLoop::AllEvents, 5);
  }
  QApplication::processEvents();  // the first paint
}

double OpenRunMs(QWidget& window) {
  QElapsedTimer timer;
  timer.start();
  window.findChild<QAction*>("mnuOpen")->trigger();
  QApplication::processEvents();  // the table repainted
  return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  if (argc != 4) {
    std::fprintf(stderr, "usage: vantor_gui_timing START_NS LOG RUNS\n");
    return 2;
  }
  const double start_ns = std::strtod(argv[1], nullptr);
  const int runs = std::max(1, std::atoi(argv[3]));
  vantor::tools::ScriptedSession session(argv[2]);
  vantor::DisplayStats& window = session.window;
  window.show();
  WaitUntilExposed(window);
  std::printf("window_shown_ms %.1f\n", (NowNs() - start_ns) / 1e6);

  std::vector<double> times;
  for (int i = 0; i < runs; ++i) times.push_back(OpenRunMs(window));
  std::sort(times.begin(), times.end());
  std::printf("open_run_ms %.1f\n", times[times.size() / 2]);
  return 0;
}
