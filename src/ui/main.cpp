#include <QApplication>

#include "ui/desktop.h"
#include "ui/display_stats.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  vantor::Desktop desktop;
  vantor::DisplayStats window(desktop);
  window.show();
  return app.exec();
}
