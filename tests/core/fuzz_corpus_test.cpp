// Every input of the fuzzer's seed corpus (and every input it ever crashed
// on, which stays there) through the whole pipeline, with the promises the
// fuzzer checks: so that the ordinary and the sanitizer builds of the tests
// replay them on every run.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "support/pipeline_check.h"
#include "support/test_files.h"

namespace vantor::testing {
namespace {

std::vector<std::string> CorpusFiles() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(VANTOR_FUZZ_CORPUS_DIR)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

class FuzzCorpus : public ::testing::TestWithParam<std::string> {};

TEST_P(FuzzCorpus, KeepsEveryPromiseOfAWholeRun) {
  ScratchDir dir;
  const std::string input = ReadBytes(std::string(VANTOR_FUZZ_CORPUS_DIR) + "/" + GetParam());
  EXPECT_EQ(RunPipelineCase(DecodePipelineCase(input), dir.path()), std::vector<std::string>{});
}

std::string RowName(const ::testing::TestParamInfo<std::string>& info) {
  std::string name = info.param;
  std::replace_if(name.begin(), name.end(), [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Seeds, FuzzCorpus, ::testing::ValuesIn(CorpusFiles()), RowName);

}  // namespace
}  // namespace vantor::testing
