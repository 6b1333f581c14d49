// When a contact opens.
#pragma once

#include <cstdint>
#include <optional>

namespace logic {

// Times are tick counts in milliseconds, which may wrap.
class ContactTimes {
public:
    std::int32_t minimum = 0; // that it stays closed
    std::int32_t maximum = 0; // after which it opens by itself, but not before the minimum; 0: never

    bool IsClosed() const { return isClosed_; }
    // Also of one that is closed, which begins anew and is no longer to be opened.
    void Close(std::uint32_t now);
    // It is to open, as soon as IsDue says so.
    void AskToOpen() { isAskedToOpen_ = true; }
    // Whether it is to open now.
    bool IsDue(std::uint32_t now) const { return DueIn(now) == 0U; }
    // Milliseconds until it is to open; nothing while it is not.
    std::optional<std::uint32_t> DueIn(std::uint32_t now) const;
    void Open() { isClosed_ = false; }

private:
    bool isClosed_ = false;
    bool isAskedToOpen_ = false;
    std::uint32_t closedAt_ = 0;
};

} // namespace logic
