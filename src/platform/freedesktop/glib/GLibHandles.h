#pragma once

#include <gio/gio.h>

#include <memory>

namespace lumatile {

/// Gives back one reference to an object of the library.
struct GObjectRelease {
    void operator()(gpointer object) const { g_object_unref(object); }
};

/// One reference to an object of the library.
template <typename Object>
using GObjectHandle = std::unique_ptr<Object, GObjectRelease>;

struct GVariantRelease {
    void operator()(GVariant* value) const { g_variant_unref(value); }
};
using GVariantHandle = std::unique_ptr<GVariant, GVariantRelease>;

struct GErrorRelease {
    void operator()(GError* error) const { g_error_free(error); }
};
using GErrorHandle = std::unique_ptr<GError, GErrorRelease>;

}  // namespace lumatile
