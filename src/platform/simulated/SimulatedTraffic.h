#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/simulated/SimulatedElement.h"
#include "windows/AttributeValue.h"

namespace lumatile {

enum class AccessKind : std::uint8_t { read, write, settable, pid };

/// One question or request of the program to another one.
struct AttributeAccess {
    AccessKind kind = AccessKind::read;
    SimulatedSubject subject;
    std::string attribute;                ///< Empty for a question for the process.
    std::optional<AttributeValue> value;  ///< Read or to be written.
    bool succeeded = false;
    double at = 0;  ///< Wall-clock time of the answer.

    /// "read AXPosition", "write AXSize failed", "pid".
    std::string text() const;
};

/// Everything the program asks of other programs' elements, recorded; and orders for something to
/// happen between two of its questions.
class SimulatedTraffic {
public:
    /// The record keeps this many of the latest accesses, enough for any single action.
    static constexpr std::size_t capacity = 4096;

    /// Runs `happening` just before the `nth` access from now (1: the very next).
    void before(std::size_t nth, std::function<void()> happening);

    /// Runs `happening` just before the `nth` access from now that is of the kind and attribute.
    void before(AccessKind kind, std::string_view attribute, std::size_t nth,
                std::function<void()> happening);

    /// Forgets the record and the counts, not the orders.
    void clear();

    const std::deque<AttributeAccess>& record() const { return record_; }

    /// The record's texts, of one subject or of all.
    std::vector<std::string> texts() const;
    std::vector<std::string> texts(const SimulatedSubject& subject) const;

    /// Accesses since the last `clear`, also those that the record has let go.
    std::size_t count(AccessKind kind) const;

    /// Orders that have not been due yet.
    std::size_t openOrders() const { return orders_.size(); }

    void announce(AccessKind kind, std::string_view attribute);
    void note(AttributeAccess access);

private:
    struct Order {
        std::optional<AccessKind> kind;  // Absent: any access.
        std::string attribute;
        std::size_t left = 1;
        std::function<void()> happening;
    };

    std::deque<AttributeAccess> record_;
    std::vector<Order> orders_;
    std::size_t counts_[4] = {};
};

}  // namespace lumatile
