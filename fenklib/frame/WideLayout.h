#pragma once
#include <array>
#include <cstddef>

#include "fenklib/frame/DialogTemplate.h"

// Wide-screen layouts derived from the normal ones: the same controls on a window kWideGrow dialog
// units wider, each placed by its anchor as a resize would place it, and with the left column
// (controls anchored top-left at the window's left edge: labels, buttons) given a share of the
// width so that long labels are not cut on the wide controllers.
inline constexpr short kWideGrow = 90;
inline constexpr short kWideLabelShare = 40;   // of kWideGrow, taken by the label column

template <std::size_t N>
constexpr std::array<DLG_ITEM, N> Widened(const DLG_ITEM (&items)[N]) {
    std::array<DLG_ITEM, N> wide{};
    for (std::size_t i = 0; i < N; ++i) {
        DLG_ITEM item = items[i];
        const bool label = item.anchor.moveX == 0 && item.anchor.moveY == 0 && item.anchor.sizeX == 0 && item.x < 20;
        if (label) {
            item.width = static_cast<short>(item.width + kWideLabelShare);
        } else {
            // Controls right of the label column move with it; the rest follow their anchors.
            const short shift = item.x >= 20 && item.anchor.moveX == 0 ? kWideLabelShare : 0;
            const short room = static_cast<short>(kWideGrow - shift);
            item.x = static_cast<short>(item.x + shift + static_cast<short>(item.anchor.moveX * room));
            item.width = static_cast<short>(item.width + static_cast<short>(item.anchor.sizeX * room));
        }
        wide[i] = item;
    }
    return wide;
}
