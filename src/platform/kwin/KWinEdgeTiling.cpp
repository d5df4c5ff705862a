#include "platform/kwin/KWinEdgeTiling.h"

#include <string>
#include <system_error>
#include <utility>

#include "base/AtomicFile.h"
#include "base/BoundedJSON.h"

namespace lumatile {

namespace {

constexpr JSONLimits limits{.bytes = 256, .depth = 1, .stringBytes = 32, .values = 8};

constexpr double patience = 0.25;  // Seconds.

}  // namespace

KWinEdgeTiling::KWinEdgeTiling(KWinChannel& channel, std::filesystem::path note)
    : channel_(channel),
      file_(std::move(note)),
      events_(channel.observe([this](const KWinEvent& event) { this->note(event); })) {}

KWinEdgeTiling::~KWinEdgeTiling() {
    events_.reset();
    if (std::exchange(isHeld_, false)) {
        order();
    }
    const std::uint64_t last = givingBack_;
    if (last != 0 && channel_.waitUntil(
                         [this, last] { return channel_.resultOf(last).has_value(); }, patience)) {
        forgetNote();
    }
}

void KWinEdgeTiling::hold(bool isHeld) {
    if (std::exchange(isHeld_, isHeld) != isHeld) {
        order();
    }
}

void KWinEdgeTiling::note(const KWinEvent& event) {
    if (const auto* everything = std::get_if<KWinEverything>(&event)) {
        // Of a run that died while it was held back; KWin has lived on with that.
        const std::optional<KWinBorders> left = readNote();
        own_ = left ? left : everything->borders;
        if (isHeld_ || left) {
            order();
        }
    } else if (const auto* borders = std::get_if<KWinBorders>(&event)) {
        own_ = *borders;
        if (isHeld_) {
            order();
        }
    } else if (const auto* done = std::get_if<KWinDone>(&event)) {
        if (givingBack_ != 0 && done->order == givingBack_) {
            forgetNote();
        }
    }
}

void KWinEdgeTiling::order() {
    givingBack_ = 0;
    if (!own_) {
        return;
    }
    if (isHeld_) {
        const nlohmann::json text{{"tiling", own_->tiling}, {"maximize", own_->maximize}};
        if (AtomicFile::replace(file_, text.dump())) {
            return;  // What cannot be given back for certain is not taken.
        }
    }
    const std::uint64_t number = channel_.give(KWinBordersOrder{isHeld_, *own_});
    if (!isHeld_) {
        givingBack_ = number;
    }
}

/// It stays until everything has been given back: a KWin that is busy may never get to it.
void KWinEdgeTiling::forgetNote() {
    givingBack_ = 0;
    std::error_code ignored;
    std::filesystem::remove(file_, ignored);
}

std::optional<KWinBorders> KWinEdgeTiling::readNote() const {
    std::string text;
    if (AtomicFile::read(file_, limits.bytes, text)) {
        return std::nullopt;
    }
    const auto parsed = BoundedJSON::parse(text, limits);
    const auto flag = [&parsed](std::string_view key) {
        const auto* const value = parsed ? BoundedJSON::member(*parsed, key) : nullptr;
        return value != nullptr ? BoundedJSON::boolean(*value) : std::nullopt;
    };
    const auto tiling = flag("tiling");
    const auto maximize = flag("maximize");
    return tiling && maximize ? std::optional(KWinBorders{*tiling, *maximize}) : std::nullopt;
}

}  // namespace lumatile
