#pragma once

#include "core/store/Specification.h"
#include "core/store/TankLine.h"

/// The specification of a tank line's model with the line's own figures in place of the placeholders; empty
/// if the line has no model or the catalogue no specification for it. Throws DatabaseFault.
Specification resultSpecification(const TankLine& tank);
