#include <QApplication>
#include <QCommandLineParser>
#include <QIcon>
#include <QTimer>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "analysis/text_file.h"
#include "ui/desktop.h"
#include "ui/display_stats.h"

namespace {

// --help, --version and mistakes are answered on the terminal, before any
// window is shown; what remains are the logs to analyse.
QStringList LogsFromCommandLine(const QCoreApplication& app) {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      "Per-player statistics and an HTML report from team capture-the-flag console logs.\n"
      "One LOG is analysed as File > Open analyses it; several are analysed together.");
  parser.addHelpOption();
  parser.addVersionOption();
  parser.addPositionalArgument("LOG", "a console log to analyse", "[LOG...]");
  if (!parser.parse(app.arguments())) {
    std::fprintf(stderr, "vantor: %s\n\n%s", qPrintable(parser.errorText()), qPrintable(parser.helpText()));
    std::exit(2);
  }
  if (parser.isSet("help")) parser.showHelp(0);
  if (parser.isSet("version")) parser.showVersion();
  return parser.positionalArguments();
}

bool AsksForHelpOrVersion(int argc, char** argv) {
  for (int i = 1; i < argc && std::strcmp(argv[i], "--") != 0; ++i) {
    for (const char* option : {"-h", "--help", "-help", "-?", "-v", "--version"}) {
      if (std::strcmp(argv[i], option) == 0) return true;
    }
  }
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  // A file grown past the size limit fails its write, which is reported;
  // an interrupted run removes its temporary files.
  std::signal(SIGXFSZ, SIG_IGN);
  vantor::RemoveTemporaryFilesOnInterrupt();
  QCoreApplication::setApplicationName("vantor");
  QCoreApplication::setApplicationVersion("0.80");
  if (AsksForHelpOrVersion(argc, argv)) {
    // Answered without a display: no window is needed for it.
    QCoreApplication terminal(argc, argv);
    LogsFromCommandLine(terminal);
  }
  QApplication app(argc, argv);
  const QStringList logs = LogsFromCommandLine(app);
  // The installed icon and desktop entry (see packaging/).
  QApplication::setWindowIcon(QIcon::fromTheme("vantor-log-analyzer"));
  QGuiApplication::setDesktopFileName("vantor-log-analyzer");
  vantor::Desktop desktop;
  vantor::DisplayStats window(desktop);
  window.show();
  // Logs given as arguments ("Open with") are opened once the window shows;
  // without any the window simply waits for its commands.
  QTimer::singleShot(0, &window, [&window, logs] { window.OpenLogsFromCommandLine(logs); });
  return app.exec();
}
