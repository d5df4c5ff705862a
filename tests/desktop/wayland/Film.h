#pragma once

#include "tests/desktop/wayland/LayerClient.h"

struct zwp_idle_inhibit_manager_v1;
struct zwp_idle_inhibitor_v1;

namespace lumatile::desktop {

/// Another program that has something to show undisturbed, as players of films have.
class Film : public LayerClient {
public:
    /// Shown, not yet begun.
    explicit Film(const std::string& socket);
    Film(const Film&) = delete;
    Film& operator=(const Film&) = delete;
    ~Film() override;

    /// The screens are to stay as they are from now on.
    void begin();
    void end();

private:
    zwp_idle_inhibit_manager_v1* inhibition_;
    zwp_idle_inhibitor_v1* inhibitor_ = nullptr;
};

}  // namespace lumatile::desktop
