#pragma once
// Refuses the window's commands while one of them runs. A run lets the
// window repaint between its steps, so without the lock a click could
// start a second command inside the first.

#include <QObject>
#include <vector>

namespace vantor {

class CommandLock {
 public:
  // Disables every control (menu items and buttons alike, through their
  // "enabled" property) for the lifetime of the lock.
  explicit CommandLock(std::vector<QObject*> controls);
  // Gives every control back the enabled state it had before.
  ~CommandLock();
  CommandLock(const CommandLock&) = delete;
  CommandLock& operator=(const CommandLock&) = delete;

 private:
  std::vector<QObject*> controls_;
  std::vector<bool> was_enabled_;
};

}  // namespace vantor
