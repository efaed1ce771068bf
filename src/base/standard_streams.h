#pragma once

namespace velmo {

/// Puts something that refuses to be read or written in the place of each standard stream the program was started
/// without. Otherwise the next file or connection would become one, and output would go into it. First thing in main.
void occupyStandardStreams();

} // namespace velmo
