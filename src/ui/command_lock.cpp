#include "ui/command_lock.h"

#include <QVariant>

namespace vantor {

CommandLock::CommandLock(std::vector<QObject*> controls) : controls_(std::move(controls)) {
  for (QObject* control : controls_) {
    was_enabled_.push_back(control->property("enabled").toBool());
    control->setProperty("enabled", false);
  }
}

CommandLock::~CommandLock() {
  for (std::size_t i = 0; i < controls_.size(); ++i) {
    controls_[i]->setProperty("enabled", bool(was_enabled_[i]));
  }
}

}  // namespace vantor
