#pragma once

namespace velmo {

/// Something others refer to where it stands: neither copied nor moved.
class Unmovable {
protected:
    Unmovable() = default;
    ~Unmovable() = default;

public:
    Unmovable(const Unmovable &) = delete;
    Unmovable &operator=(const Unmovable &) = delete;
};

/// What a collaborator can do, without saying who does it.
class Interface {
public:
    Interface() = default;
    Interface(const Interface &) = delete;
    Interface &operator=(const Interface &) = delete;
    virtual ~Interface() = default;
};

} // namespace velmo
