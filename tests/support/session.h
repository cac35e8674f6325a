#pragma once
// A worksheet and the host it reports to, with the logs and side files in a
// scratch directory that is also the program's directory.

#include <string>

#include "analysis/form1.h"
#include "support/fake_host.h"
#include "support/test_files.h"

namespace vantor::testing {

struct Session {
  ScratchDir dir;
  FakeHost host;
  Form1 form{host};

  Session() { host.program_dir = dir.path().string(); }
  // Writes the log name in the directory and imports it.
  void Open(const std::string& name, const std::string& bytes) {
    host.chosen_log = dir / name;
    WriteBytes(host.chosen_log, bytes);
    form.LoadFile();
  }
};

}  // namespace vantor::testing
