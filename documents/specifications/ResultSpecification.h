#pragma once

#include "core/store/Specification.h"
#include "core/store/TankLine.h"

/// The catalogue's representative for the user's postal code, looked up each time; empty if there is none.
/// Throws DatabaseFault.
QString directoryRepresentative();

/// The specification of a tank line's model with the line's own figures and a representative in place of the
/// placeholders; empty if the line has no model or the catalogue no specification for it. Throws
/// DatabaseFault.
Specification resultSpecification(const TankLine& tank, const QString& representative);
