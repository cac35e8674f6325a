// libFuzzer target over the whole pipeline: arbitrary bytes as one log, or
// as two logs analysed together, through import, recognition, statistics,
// the report and the side files, into a scratch directory, with the core
// alone and the tests' fake host (support/pipeline_check.h gives the input
// layout). Besides crashes, sanitizer findings and leaks, every promise
// RunPipelineCase finds broken is a finding.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "support/pipeline_check.h"
#include "support/test_files.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const vantor::testing::ScratchDir scratch;
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const auto findings = vantor::testing::RunPipelineCase(vantor::testing::DecodePipelineCase(input), scratch.path());
  for (const std::string& finding : findings) std::fprintf(stderr, "pipeline: %s\n", finding.c_str());
  if (!findings.empty()) std::abort();
  return 0;
}
