#pragma once

#include "calculation/PressureCurve.h"
#include "calculation/SizedTank.h"
#include "calculation/Worksheet.h"

/// What the catalogue was asked for a sized line and what it gave, the model chosen with its reserve, and for
/// shock arrestors the leak load and the delay of the pump. All throw DatabaseFault.
void addSearch(Worksheet& sheet, const SizedTank& tank);
void addChoice(Worksheet& sheet, const SizedTank& tank);

/// What to do on site: the precharge and the pressures at valves and pumps.
void addSite(Worksheet& sheet, const SizedTank& tank);

/// The curve of the chosen tanks; nothing when there is none to draw.
std::optional<PressureCurve> curveOf(const SizedTank& tank);
