#include "text/vocabulary/edit_distance.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace velmo {

// A path of at most `limit` edits never leaves the diagonal by more than `limit`, so each row of the usual
// table shrinks to that band: band[offset] is the cell of column row + offset - limit.
int editDistance(std::span<const char32_t> from, std::span<const char32_t> to, int limit) {
    const auto rows = static_cast<std::ptrdiff_t>(from.size());
    const auto columns = static_cast<std::ptrdiff_t>(to.size());
    const int tooFar = limit + 1;
    if (std::abs(rows - columns) > limit)
        return tooFar;

    const int width = 2 * limit + 1;
    std::array<int, 2 *kLargestEditDistance + 3> cells = {}; // the band and a wall on either side
    cells.fill(tooFar);
    int *const band = cells.data() + 1;
    for (int offset = limit; offset < width; ++offset)
        band[offset] = offset - limit;

    for (std::ptrdiff_t row = 1; row <= rows; ++row) {
        for (int offset = 0; offset < width; ++offset) {
            const std::ptrdiff_t column = row + offset - limit;
            if (column < 1 || column > columns) {
                band[offset] = column == 0 ? static_cast<int>(row) : tooFar;
                continue;
            }
            const int substituted = band[offset] + (from[row - 1] == to[column - 1] ? 0 : 1);
            const int deleted = band[offset + 1] + 1;
            const int inserted = band[offset - 1] + 1;
            band[offset] = std::min({substituted, deleted, inserted, tooFar});
        }
        if (*std::min_element(band, band + width) == tooFar)
            return tooFar;
    }
    return band[columns - rows + limit];
}

} // namespace velmo
