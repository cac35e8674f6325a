#pragma once
// The summary's pictures, drawn inline (HTML and SVG, no script): the kill
// matrix as a heat map, kills by weapon per player class as bars, and a
// match's frags and captures in log order as a timeline.

#include <ostream>
#include <vector>

#include "stats/matches.h"
#include "stats/provenance.h"
#include "stats/run_record.h"

namespace vantor {

void WriteKillHeatMap(std::ostream& out, const std::vector<KillCount>& matrix);
void WriteWeaponClassBars(std::ostream& out, const std::vector<Match>& matches);
void WriteTimeline(std::ostream& out, const RunRecord& run, const Match& match);

}  // namespace vantor
