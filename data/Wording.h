#pragma once

#include "data/CatalogueModel.h"
#include "data/Drawing.h"

#include <string>
#include <vector>

/// What the specification text and description of a model say against its construction and its drawing,
/// or leave unsaid; nothing when all agree.
std::vector<std::string> WordingFaults(const CatalogueModel& model, const Drawing& drawing);
