#include "base/BoundedJSON.h"

#include <cstddef>
#include <vector>

#include "base/WholeNumber.h"

namespace lumatile {

namespace {

using nlohmann::json;

/// Builds the document while it is read and stops the reader at the first bound that is passed, so
/// that an oversized text never becomes an oversized document.
class BoundedBuilder final : public nlohmann::json_sax<json> {
public:
    explicit BoundedBuilder(const JSONLimits& limits) : limits_(limits) {}

    json takeDocument() { return std::move(document_); }

    bool null() override { return add(json(nullptr)) != nullptr; }
    bool boolean(bool value) override { return add(json(value)) != nullptr; }
    bool number_integer(number_integer_t value) override { return add(json(value)) != nullptr; }
    bool number_unsigned(number_unsigned_t value) override { return add(json(value)) != nullptr; }

    bool number_float(number_float_t value, const string_t& text) override {
        if (const auto whole = wholeNumber(text)) {
            return add(std::visit([](auto number) { return json(number); }, *whole)) != nullptr;
        }
        return add(json(value)) != nullptr;
    }

    bool string(string_t& value) override {
        return value.size() <= limits_.stringBytes && add(json(std::move(value))) != nullptr;
    }

    // Only the binary formats have it.
    bool binary(binary_t& /*value*/) override { return false; }

    bool start_object(std::size_t /*elements*/) override { return open(json::object()); }
    bool end_object() override { return close(); }
    bool start_array(std::size_t /*elements*/) override { return open(json::array()); }
    bool end_array() override { return close(); }

    bool key(string_t& value) override {
        if (value.size() > limits_.stringBytes) {
            return false;
        }
        const auto [place, isNew] =
            open_.back()->get_ref<json::object_t&>().try_emplace(std::move(value));
        member_ = &place->second;
        return isNew;
    }

    bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                     const nlohmann::detail::exception& /*error*/) override {
        return false;
    }

private:
    /// Where the value now lies; null when there are too many values.
    json* add(json value) {
        if (values_ == limits_.values) {
            return nullptr;
        }
        ++values_;
        if (open_.empty()) {
            document_ = std::move(value);
            return &document_;
        }
        json& container = *open_.back();
        if (container.is_object()) {
            *member_ = std::move(value);
            return member_;
        }
        auto& elements = container.get_ref<json::array_t&>();
        return &elements.emplace_back(std::move(value));
    }

    bool open(json container) {
        if (open_.size() == limits_.depth) {
            return false;
        }
        json* const place = add(std::move(container));
        if (place == nullptr) {
            return false;
        }
        // Stays valid while it is open: only the innermost container grows.
        open_.push_back(place);
        return true;
    }

    bool close() {
        open_.pop_back();
        return true;
    }

    const JSONLimits& limits_;
    json document_;
    std::vector<json*> open_;
    json* member_ = nullptr;
    std::size_t values_ = 0;
};

}  // namespace

std::optional<json> BoundedJSON::parse(std::string_view text, const JSONLimits& limits) {
    // The reader takes a zero byte for the end of the text and would not see what follows.
    if (text.size() > limits.bytes || text.find('\0') != std::string_view::npos) {
        return std::nullopt;
    }
    BoundedBuilder builder(limits);
    if (!json::sax_parse(text.begin(), text.end(), &builder)) {
        return std::nullopt;
    }
    return builder.takeDocument();
}

const json* BoundedJSON::member(const json& value, std::string_view key) {
    if (!value.is_object()) {
        return nullptr;
    }
    const auto place = value.find(key);
    return place == value.end() ? nullptr : &*place;
}

std::optional<bool> BoundedJSON::boolean(const json& value) {
    return value.is_boolean() ? std::optional(value.get<bool>()) : std::nullopt;
}

std::optional<double> BoundedJSON::number(const json& value) {
    return value.is_number() ? std::optional(value.get<double>()) : std::nullopt;
}

std::optional<std::string> BoundedJSON::string(const json& value) {
    return value.is_string() ? std::optional(value.get<std::string>()) : std::nullopt;
}

}  // namespace lumatile
