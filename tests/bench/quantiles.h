// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

/// The value below which that part of the values lies; of two that are as near, the smaller one.
inline double quantile(std::vector<double> values, double part)
{
    const auto place = values.begin() + std::ptrdiff_t(double(values.size() - 1) * part);
    std::nth_element(values.begin(), place, values.end());
    return *place;
}

inline double median(std::vector<double> values)
{
    return quantile(std::move(values), 0.5);
}
