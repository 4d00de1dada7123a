#pragma once

#include "core/store/Model.h"
#include "core/store/TankLine.h"
#include "documents/submittals/SizingNotes.h"

#include <QStringList>

namespace SizingNotes {

/// The facts of a stored line and its model, which the catalogue may lack. The connection that a shock
/// arrestor's pipe demands and the sizes that the stored conditions give now are not among them: the caller
/// adds them. Throws DatabaseFault.
Facts factsOf(const TankLine& tank, const std::optional<Model>& model);

/// All notes on the facts.
QStringList textsOf(const Facts& facts);

} // namespace SizingNotes
