#pragma once

#include "core/base/Applications.h"

#include <array>
#include <string_view>

/// The temperatures allowed for a fluid in an expansion tank's system.
struct FluidLimits {
    std::string_view fluid;
    TemperatureLimits limits;
};

/// The fluid of lines whose fluid cannot be chosen.
inline constexpr char waterFluid[] = "Water";

/// The fluids in the order of the list.
inline constexpr std::array<FluidLimits, 11> fluidLimits = {{
    {waterFluid, {40, 100, 90, 240}},
    {"10% Ethylene Glycol", {30, 100, 90, 240}},
    {"20% Ethylene Glycol", {20, 100, 90, 240}},
    {"30% Ethylene Glycol", {10, 100, 90, 240}},
    {"40% Ethylene Glycol", {0, 100, 90, 250}},
    {"50% Ethylene Glycol", {-20, 100, 90, 250}},
    {"10% Propylene Glycol", {30, 100, 90, 240}},
    {"20% Propylene Glycol", {20, 100, 90, 240}},
    {"30% Propylene Glycol", {10, 100, 90, 240}},
    {"40% Propylene Glycol", {0, 100, 90, 250}},
    {"50% Propylene Glycol", {-20, 100, 90, 250}},
}};
