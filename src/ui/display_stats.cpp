#include "ui/display_stats.h"

#include <QAction>
#include <QProgressBar>
#include <QPushButton>

#include "analysis/form1.h"
#include "ui/gui_host.h"

namespace vantor {

DisplayStats::DisplayStats(QWidget* parent) : QMainWindow(parent) {
  setWindowTitle("Vantor Log Analyzer");
  auto* process = new QPushButton("Process", this);
  process->setEnabled(false);
  auto* progress = new QProgressBar(this);
  progress->setRange(0, 1000);
  progress->hide();
  auto* append = new QAction("Append", this);
  append->setCheckable(true);
  host_ = std::make_unique<GuiHost>(this, progress, process, append);
  form1_ = std::make_unique<Form1>(*host_);
}

DisplayStats::~DisplayStats() = default;

}  // namespace vantor
