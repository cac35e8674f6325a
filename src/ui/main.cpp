#include <QApplication>
#include <QCommandLineParser>
#include <QIcon>
#include <QTimer>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>

#include "analysis/text_file.h"
#include "ui/desktop.h"
#include "ui/display_stats.h"

namespace {

// --help, --version and mistakes are answered on the terminal, before any
// window is shown; what remains are the logs to analyse. --help-all lists
// the toolkit's options too, which only a QApplication knows.
QStringList LogsFromCommandLine(const QStringList& arguments, const QCoreApplication& app) {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      "Per-player statistics and an HTML report from team capture-the-flag console logs.\n"
      "One LOG is analysed as File > Open analyses it; several are analysed together.");
  parser.addHelpOption();
  parser.addVersionOption();
  parser.addPositionalArgument("LOG", "a console log to analyse", "[LOG...]");
  if (!parser.parse(arguments)) {
    std::fprintf(stderr, "vantor: %s\n\n%s", qPrintable(parser.errorText()), qPrintable(parser.helpText()));
    std::exit(2);
  }
  if (parser.isSet("help")) parser.showHelp(0);
  if (parser.isSet("version")) parser.showVersion();
  if (parser.isSet("help-all")) parser.process(app);
  return parser.positionalArguments();
}

// The options QApplication takes off the command line before the program
// reads it, as --help-all lists them, and --help-all itself, which needs
// them; true: a value follows.
constexpr std::pair<std::string_view, bool> kToolkitOptions[] = {
    {"platform", true},        {"platformpluginpath", true}, {"platformtheme", true}, {"plugin", true},
    {"qwindowgeometry", true}, {"qwindowicon", true},        {"qwindowtitle", true},  {"session", true},
    {"display", true},         {"geometry", true},           {"style", true},         {"stylesheet", true},
    {"reverse", false},        {"widgetcount", false},       {"qmljsdebugger", true}, {"help-all", false}};

// The command line without the toolkit's options, when it asks for an
// answer on the terminal (any other option: help, version or a mistake),
// which needs no display; none when the window is wanted. After "--" come
// only logs.
std::optional<QStringList> TerminalCommandLine(int argc, char** argv) {
  QStringList kept{QString::fromLocal8Bit(argv[0])};
  bool answer = false;
  for (int i = 1; i < argc; ++i) {
    const std::string_view arg = argv[i];
    if (arg == "--") {
      while (i < argc) kept << QString::fromLocal8Bit(argv[i++]);
      break;
    }
    const bool option = arg.size() > 1 && arg[0] == '-';
    if (!option) {
      kept << QString::fromLocal8Bit(argv[i]);
      continue;
    }
    std::string_view name = arg.substr(arg.starts_with("--") ? 2 : 1);
    name = name.substr(0, name.find('='));
    const auto* toolkit = std::find_if(std::begin(kToolkitOptions), std::end(kToolkitOptions),
                                       [name](const auto& known) { return known.first == name; });
    if (toolkit == std::end(kToolkitOptions) || name == "help-all") kept << QString::fromLocal8Bit(argv[i]);
    if (toolkit == std::end(kToolkitOptions))
      answer = true;
    else if (toolkit->second && arg.find('=') == std::string_view::npos)
      ++i;  // its value
  }
  return answer ? std::optional(kept) : std::nullopt;
}

}  // namespace

int main(int argc, char** argv) {
  // A file grown past the size limit fails its write, which is reported;
  // an interrupted run removes its temporary files.
  std::signal(SIGXFSZ, SIG_IGN);
  vantor::RemoveTemporaryFilesOnInterrupt();
  QCoreApplication::setApplicationName("vantor");
  QCoreApplication::setApplicationVersion("0.80");
  if (const std::optional<QStringList> arguments = TerminalCommandLine(argc, argv)) {
    // Answered without a display: no window is needed for it.
    QCoreApplication terminal(argc, argv);
    LogsFromCommandLine(*arguments, terminal);
  }
  QApplication app(argc, argv);
  const QStringList logs = LogsFromCommandLine(app.arguments(), app);
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
