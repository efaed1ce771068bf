#pragma once

#include "service/wire/session_interfaces.h"

namespace velmo {

/// The account of a person who has none: no token, nothing to report or to bring in step.
class NobodySignedIn final : public Account,
                             public TokenSource,
                             public StatisticsReporter,
                             public Synchronisation {
public:
    [[nodiscard]] bool isLoggedIn() const override { return false; }
    [[nodiscard]] std::optional<QString> authToken() override { return std::nullopt; }
    void prepareToken() override {}
    void incrementStats(qsizetype) override {}
    void syncAll() override {}
    [[nodiscard]] std::optional<Date> lastSyncDate() const override { return std::nullopt; }
};

} // namespace velmo
