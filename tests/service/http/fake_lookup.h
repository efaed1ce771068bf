#pragma once

/// Replaces the C library's name look-up in this test program for two hosts: "here.velmo.example" is this
/// machine, and looking up "slow.velmo.example" takes until the test says so.
namespace velmo::testing {

/// Lets every look-up of the slow name end, unsuccessfully, from now on.
void endSlowLookups();

} // namespace velmo::testing
