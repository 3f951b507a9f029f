#include <boost/json.hpp>
#include <boost/json/src.hpp>

#include "Plugin.h"

namespace {

namespace json = boost::json;

struct BoostJson {
    using Node = json::value;
    using Text = std::string;

    class Request {
     public:
        explicit Request(const peers::Texts& texts)
            : options_(parse(peers::viewOf(texts.options))),
              params_(parse(peers::viewOf(texts.params))),
              query_(parse(peers::viewOf(texts.query))) {
            const std::string_view text = peers::viewOf(texts.body);
            json::error_code failure;
            body_ = json::parse(text, failure);
            if (failure && !text.empty()) body_ = json::string(text);
        }
        const Node& options() const { return options_; }
        const Node& params() const { return params_; }
        const Node& query() const { return query_; }
        const Node& body() const { return body_; }

     private:
        /// Null if the text is not JSON.
        static Node parse(std::string_view text) {
            json::error_code failure;
            return json::parse(text, failure);
        }

        Node options_, params_, query_, body_;
    };

    static const Node* member(const Node& node, std::string_view name) {
        const auto* const object = node.if_object();
        return object ? object->if_contains(name) : nullptr;
    }
    static bool isObject(const Node& node) { return node.is_object(); }
    static bool isArray(const Node& node) { return node.is_array(); }
    static bool isNumber(const Node& node) { return node.is_number(); }
    static std::size_t memberCount(const Node& node) { return node.get_object().size(); }
    static std::span<const Node> elements(const Node& node) {
        const json::array& array = node.get_array();
        return {array.data(), array.size()};
    }
    static std::string_view text(const Node& node) {
        const auto* const string = node.if_string();
        return string ? std::string_view(string->data(), string->size()) : std::string_view();
    }
    static double number(const Node& node) { return node.to_number<double>(); }
    static std::uint32_t unsignedNumber(const Node& node) {
        return node.is_int64() ? peers::unsignedNumber(node.get_int64())
                               : peers::unsignedNumber(node.to_number<double>());
    }

    static Text answer(Node value = nullptr) { return write(nullptr, std::move(value)); }
    static Text answer(const peers::Range& range) {
        json::object value(2);
        value.emplace("min", range.minimum);
        value.emplace("max", range.maximum);
        return answer(std::move(value));
    }
    static Text answer(const std::vector<peers::Address>& list) {
        json::array value;
        value.reserve(list.size());
        for (const peers::Address& address : list) {
            json::object monitor(2);
            monitor.emplace("serial", peers::boundedText(address.serial));
            monitor.emplace("product", peers::boundedText(address.product));
            value.emplace_back(std::move(monitor));
        }
        return answer(std::move(value));
    }
    static Text answer(const peers::Failure& failure) {
        json::object error(4);
        if (failure.code) {
            error.emplace("code", failure.code);
            if (*failure.reason) error.emplace("reason", failure.reason);
        }
        error.emplace("name", failure.name);
        error.emplace("message", failure.message);
        return write(std::move(error), nullptr);
    }
    static Text answer(const DmCalibrationTarget& target) {
        json::object value(14);
        value.emplace("accuracy", target.accuracy);
        value.emplace("Lmax", target.Lmax);
        value.emplace("LminEnable", target.LminEnable != 0);
        value.emplace("Lmin", target.Lmin);
        value.emplace("colorTemperature", target.colorTemperature);
        json::object whitePoint(2);
        whitePoint.emplace("x", target.whitePoint.x);
        whitePoint.emplace("y", target.whitePoint.y);
        value.emplace("whitePoint", std::move(whitePoint));
        value.emplace("displayFunction", target.displayFunction);
        value.emplace("exp", target.exp);
        value.emplace("userFileName", peers::boundedText(target.userFileName));
        value.emplace("LambEnable", target.LambEnable != 0);
        value.emplace("Lamb", target.Lamb);
        value.emplace("ambient", target.ambient);
        json::object sensor(2);
        sensor.emplace("name", peers::boundedText(target.ambientSensor.name));
        sensor.emplace("serial", peers::boundedText(target.ambientSensor.serial));
        value.emplace("ambientSensor", std::move(sensor));
        value.emplace("lut", json::array(std::begin(target.lut), std::end(target.lut)));
        return answer(std::move(value));
    }

    static const char* characters(const Text& text) { return text.c_str(); }

 private:
    static Text write(Node error, Node value) {
        json::object answer(2);
        answer.emplace("error", std::move(error));
        answer.emplace("value", std::move(value));
        return json::serialize(answer);
    }
};

}  // namespace

PEER_EXPORTS(BoostJson)
