#pragma once
// One input through the whole pipeline, as the fuzzer and the corpus replay
// run it: its bytes become one or two logs in a scratch directory, which are
// imported, recognised, counted and reported, and every promise the program
// makes about such a run is checked.
//
// Input layout: when the first byte is below 0x20 it holds options (bit 0
// keeps the places of rows and runs every export, bit 1 makes two logs that
// are appended and processed together, bits 2-3 pick the log's name, bit 4
// sets an output directory) and the second byte says where the rest is cut
// into the two logs, as a fraction of 255. Otherwise the whole input is one
// log named "game.log", and an odd first byte keeps the places.

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace vantor::testing {

struct PipelineCase {
  std::vector<std::string> logs;  // one or two, in the order they are opened
  std::size_t name = 0;           // row of the log-name table
  bool keep_provenance = false;
  bool output_dir = false;
};

PipelineCase DecodePipelineCase(std::string_view input);

// Runs the case in dir (emptied first) and returns one line per broken
// promise: a message shown, a missing or extra file, a changed log, a
// report cut short, side files that disagree with the run, a statistics
// table unlike the literal rendering's, a count whose lines do not number
// it. Empty when every promise held.
std::vector<std::string> RunPipelineCase(const PipelineCase& c, const std::filesystem::path& dir);

}  // namespace vantor::testing
