#pragma once

#include "data/CatalogueModel.h"
#include "data/Drawing.h"

#include <string>
#include <vector>

/// What a model's specification text and description get wrong, or leave out, about its construction and
/// drawing; empty if they agree.
std::vector<std::string> wordingFaults(const CatalogueModel& model, const Drawing& drawing);
