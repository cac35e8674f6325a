#pragma once
// DisplayStats: the main window.

#include <QMainWindow>
#include <memory>

namespace vantor {

class Form1;
class GuiHost;

class DisplayStats : public QMainWindow {
  Q_OBJECT

 public:
  explicit DisplayStats(QWidget* parent = nullptr);
  ~DisplayStats() override;

 private:
  std::unique_ptr<GuiHost> host_;
  std::unique_ptr<Form1> form1_;
};

}  // namespace vantor
