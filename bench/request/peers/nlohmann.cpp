#include <nlohmann/json.hpp>

#include "Plugin.h"

namespace {

struct Nlohmann {
    using Node = nlohmann::json;
    using Text = std::string;

    class Request {
     public:
        explicit Request(const peers::Texts& texts)
            : options_(parse(peers::viewOf(texts.options))),
              params_(parse(peers::viewOf(texts.params))),
              query_(parse(peers::viewOf(texts.query))),
              body_(Node::parse(peers::viewOf(texts.body), nullptr, false)) {
            if (!body_.is_discarded()) return;
            const std::string_view text = peers::viewOf(texts.body);
            body_ = text.empty() ? Node() : Node(text);
        }
        const Node& options() const { return options_; }
        const Node& params() const { return params_; }
        const Node& query() const { return query_; }
        const Node& body() const { return body_; }

     private:
        static Node parse(std::string_view text) {
            Node node = Node::parse(text, nullptr, false);
            return node.is_discarded() ? Node() : node;
        }

        Node options_, params_, query_, body_;
    };

    static const Node* member(const Node& node, std::string_view name) {
        if (!node.is_object()) return nullptr;
        const auto found = node.find(name);
        return found == node.end() ? nullptr : &*found;
    }
    static bool isObject(const Node& node) { return node.is_object(); }
    static bool isArray(const Node& node) { return node.is_array(); }
    static bool isNumber(const Node& node) { return node.is_number(); }
    static std::size_t memberCount(const Node& node) { return node.size(); }
    static std::span<const Node> elements(const Node& node) { return node.get_ref<const Node::array_t&>(); }
    static std::string_view text(const Node& node) {
        return node.is_string() ? std::string_view(node.get_ref<const std::string&>()) : std::string_view();
    }
    static double number(const Node& node) { return node.get<double>(); }
    static std::uint32_t unsignedNumber(const Node& node) {
        return node.is_number_integer() ? peers::unsignedNumber(node.get<std::int64_t>())
                                        : peers::unsignedNumber(node.get<double>());
    }

    static Text answer(Node value = nullptr) {
        Node answer;
        answer["error"] = nullptr;
        answer["value"] = std::move(value);
        return answer.dump();
    }
    static Text answer(const peers::Range& range) {
        Node value;
        value["min"] = range.minimum;
        value["max"] = range.maximum;
        return answer(std::move(value));
    }
    static Text answer(const std::vector<peers::Address>& list) {
        Node value = Node::array();
        value.get_ref<Node::array_t&>().reserve(list.size());
        for (const peers::Address& address : list) {
            Node& monitor = value.emplace_back(Node::object());
            monitor["serial"] = peers::boundedText(address.serial);
            monitor["product"] = peers::boundedText(address.product);
        }
        return answer(std::move(value));
    }
    static Text answer(const peers::Failure& failure) {
        Node answer;
        Node& error = answer["error"];
        if (failure.code) {
            error["code"] = failure.code;
            if (*failure.reason) error["reason"] = failure.reason;
        }
        error["name"] = failure.name;
        error["message"] = failure.message;
        answer["value"] = nullptr;
        return answer.dump();
    }
    static Text answer(const DmCalibrationTarget& target) {
        Node value;
        value["accuracy"] = target.accuracy;
        value["Lmax"] = target.Lmax;
        value["LminEnable"] = target.LminEnable != 0;
        value["Lmin"] = target.Lmin;
        value["colorTemperature"] = target.colorTemperature;
        Node& whitePoint = value["whitePoint"];
        whitePoint["x"] = target.whitePoint.x;
        whitePoint["y"] = target.whitePoint.y;
        value["displayFunction"] = target.displayFunction;
        value["exp"] = target.exp;
        value["userFileName"] = peers::boundedText(target.userFileName);
        value["LambEnable"] = target.LambEnable != 0;
        value["Lamb"] = target.Lamb;
        value["ambient"] = target.ambient;
        Node& sensor = value["ambientSensor"];
        sensor["name"] = peers::boundedText(target.ambientSensor.name);
        sensor["serial"] = peers::boundedText(target.ambientSensor.serial);
        value["lut"] = Node::array_t(std::begin(target.lut), std::end(target.lut));
        return answer(std::move(value));
    }

    static const char* characters(const Text& text) { return text.c_str(); }
};

}  // namespace

PEER_EXPORTS(Nlohmann)
