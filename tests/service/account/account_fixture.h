#pragma once

#include "desks/account_desk.h"
#include "support/log_capture.h"

#include <gmock/gmock.h>

namespace velmo::testing {

class AccountTest : public ::testing::Test, protected AccountDesk {
protected:
    LogCapture log;
};

} // namespace velmo::testing
