#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "windows/AccessibilityPlatform.h"
#include "windows/Element.h"

namespace lumatile {

/// What an element of a KWin session stands for, as a value.
class KWinElement final : public ElementHandle {
public:
    enum class Kind : std::uint8_t { systemWide, application, window };

    static Element systemWide() { return std::make_shared<KWinElement>(Kind::systemWide, 0, ""); }
    static Element application(Pid pid) {
        return std::make_shared<KWinElement>(Kind::application, pid, "");
    }
    static Element window(std::string id) {
        return std::make_shared<KWinElement>(Kind::window, 0, std::move(id));
    }

    /// @param pid of an application
    /// @param id of a window, as KWin has it
    KWinElement(Kind kind, Pid pid, std::string id) : kind_(kind), pid_(pid), id_(std::move(id)) {}

    Kind kind() const { return kind_; }
    Pid pid() const { return pid_; }
    const std::string& id() const { return id_; }

    bool equals(const ElementHandle& other) const override;
    std::size_t hash() const override;

private:
    Kind kind_;
    Pid pid_;
    std::string id_;
};

}  // namespace lumatile
