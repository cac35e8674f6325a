#include <QApplication>

#include "ui/display_stats.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  vantor::DisplayStats window;
  window.show();
  return app.exec();
}
