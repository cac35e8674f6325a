#include <QApplication>
#include <QIcon>
#include <QTimer>
#include <csignal>

#include "analysis/text_file.h"
#include "ui/desktop.h"
#include "ui/display_stats.h"

int main(int argc, char** argv) {
  // A file grown past the size limit fails its write, which is reported;
  // an interrupted run removes its temporary files.
  std::signal(SIGXFSZ, SIG_IGN);
  vantor::RemoveTemporaryFilesOnInterrupt();
  QApplication app(argc, argv);
  // The installed icon and desktop entry (see packaging/).
  QApplication::setWindowIcon(QIcon::fromTheme("vantor-log-analyzer"));
  QGuiApplication::setDesktopFileName("vantor-log-analyzer");
  vantor::Desktop desktop;
  vantor::DisplayStats window(desktop);
  window.show();
  // Logs given as arguments ("Open with") are opened once the window shows;
  // without any the window simply waits for its commands.
  const QStringList logs = QApplication::arguments().mid(1);
  QTimer::singleShot(0, &window, [&window, logs] { window.OpenLogsFromCommandLine(logs); });
  return app.exec();
}
