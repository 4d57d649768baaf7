// SPDX-License-Identifier: MIT
#include "qip/Support/ScrollGeometry.h"

#include <algorithm>

ScrollGeometry::Axis ScrollGeometry::clamp(int origin, int extent, int canvas,
                                           bool centerWhenOversize)
{
    Axis axis = {0, 0, extent};
    if (extent > canvas) {
        axis.origin = centerWhenOversize ? (canvas - extent) / 2 : 0;
        axis.page = canvas;
    } else {
        // Written without a sum, which could overflow.
        axis.origin = std::clamp(origin, 0, canvas - extent);
        // A view of no cells fits behind the last one, where a scroll bar cannot go.
        axis.value = std::min(axis.origin, std::max(canvas - 1, 0));
    }
    axis.page = std::max(axis.page, 1);
    return axis;
}
