#include <QApplication>
#include <QTimer>

#include "ui/desktop.h"
#include "ui/display_stats.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  vantor::Desktop desktop;
  vantor::DisplayStats window(desktop);
  window.show();
  // Logs given as arguments ("Open with") are opened once the window shows.
  const QStringList logs = QApplication::arguments().mid(1);
  if (!logs.isEmpty()) QTimer::singleShot(0, &window, [&window, logs] { window.OpenLogsFromCommandLine(logs); });
  return app.exec();
}
