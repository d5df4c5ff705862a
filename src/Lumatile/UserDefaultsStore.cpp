#include "Lumatile/UserDefaultsStore.h"

namespace lumatile {

void UserDefaultsStore::set(const std::optional<Bytes>& value, std::string_view key) {
    if (value) {
        defaults_.setBytes(key, *value);
    } else {
        defaults_.remove(key);
    }
}

}  // namespace lumatile
