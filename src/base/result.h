#pragma once

#include <tl/expected.hpp>

namespace velmo {

/// A value, or the reason why there is none. Failures are values: nothing is thrown across a component
/// border.
template <class Value, class Failure>
using Result = tl::expected<Value, Failure>;

template <class Failure>
[[nodiscard]] auto failed(Failure failure) {
    return tl::unexpected<Failure>(std::move(failure));
}

} // namespace velmo
