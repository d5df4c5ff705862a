#include "platform/kwin/KWinOrder.h"

#include <nlohmann/json.hpp>

namespace lumatile {

namespace {

using nlohmann::json;

struct Describe {
    json& text;

    void operator()(const KWinPlaceOrder& order) const {
        text["do"] = "place";
        text["id"] = order.id;
        const auto add = [this](const char* key, const std::optional<double>& value) {
            if (value) {
                text[key] = *value;
            }
        };
        add("x", order.x);
        add("y", order.y);
        add("width", order.width);
        add("height", order.height);
    }

    void operator()(const KWinBordersOrder& order) const {
        text["do"] = "borders";
        text["isTaken"] = order.isTaken;
        text["tiling"] = order.own.tiling;
        text["maximize"] = order.own.maximize;
    }

    void operator()(const KWinFrontOrder& order) const {
        text["do"] = "front";
        text["pid"] = order.pid;
        text["title"] = order.title;
    }

    void operator()(const KWinEndOrder& /*order*/) const { text["do"] = "end"; }
};

}  // namespace

std::string kwinOrdersText(const std::vector<KWinNumberedOrder>& orders) {
    json list = json::array();
    for (const KWinNumberedOrder& each : orders) {
        json text{{"order", each.number}};
        std::visit(Describe{text}, each.order);
        list.push_back(std::move(text));
    }
    return list.dump();
}

}  // namespace lumatile
