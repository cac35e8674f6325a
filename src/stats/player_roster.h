#pragma once
// GetIndividualPlayers: the roster, the distinct killers and victims in
// order of first appearance, killers before victims. "Himself" marks a
// suicide, not a player: no name holding it joins the roster.

#include "analysis/worksheet_list.h"

namespace vantor {

// killers and victims share roster's pool.
void GetIndividualPlayers(const WorksheetList& killers, const WorksheetList& victims, WorksheetList& roster);

}  // namespace vantor
