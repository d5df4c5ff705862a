#include "platform/simulated/SimulatedTraffic.h"

#include <algorithm>
#include <utility>

namespace lumatile {

std::string AttributeAccess::text() const {
    std::string result;
    switch (kind) {
        case AccessKind::read:
            result = "read " + attribute;
            break;
        case AccessKind::write:
            result = "write " + attribute;
            break;
        case AccessKind::settable:
            result = "settable " + attribute;
            break;
        case AccessKind::pid:
            result = "pid";
            break;
    }
    return succeeded ? result : result + " failed";
}

void SimulatedTraffic::before(std::size_t nth, std::function<void()> happening) {
    orders_.push_back({std::nullopt, {}, nth, std::move(happening)});
}

void SimulatedTraffic::before(AccessKind kind, std::string_view attribute, std::size_t nth,
                              std::function<void()> happening) {
    orders_.push_back({kind, std::string(attribute), nth, std::move(happening)});
}

void SimulatedTraffic::clear() {
    record_.clear();
    std::fill(std::begin(counts_), std::end(counts_), 0);
}

std::vector<std::string> SimulatedTraffic::texts() const {
    std::vector<std::string> result;
    for (const AttributeAccess& access : record_) {
        result.push_back(access.text());
    }
    return result;
}

std::vector<std::string> SimulatedTraffic::texts(const SimulatedSubject& subject) const {
    std::vector<std::string> result;
    for (const AttributeAccess& access : record_) {
        if (access.subject == subject) {
            result.push_back(access.text());
        }
    }
    return result;
}

std::size_t SimulatedTraffic::count(AccessKind kind) const {
    return counts_[static_cast<std::size_t>(kind)];
}

void SimulatedTraffic::announce(AccessKind kind, std::string_view attribute) {
    std::vector<std::function<void()>> due;
    for (Order& order : orders_) {
        const bool matches = !order.kind || (*order.kind == kind && order.attribute == attribute);
        if (matches && --order.left == 0) {
            due.push_back(std::move(order.happening));
        }
    }
    if (due.empty()) {
        return;
    }
    std::erase_if(orders_, [](const Order& order) { return order.left == 0; });
    for (const auto& happening : due) {
        happening();
    }
}

void SimulatedTraffic::note(AttributeAccess access) {
    ++counts_[static_cast<std::size_t>(access.kind)];
    if (record_.size() == capacity) {
        record_.pop_front();
    }
    record_.push_back(std::move(access));
}

}  // namespace lumatile
