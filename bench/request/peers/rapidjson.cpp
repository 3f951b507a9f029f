#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "Plugin.h"

namespace {

// Answers are written without a document.
struct RapidJson {
    using Node = rapidjson::Value;
    using Text = rapidjson::StringBuffer;
    using Writer = rapidjson::Writer<Text>;

    class Request {
     public:
        explicit Request(const peers::Texts& texts) {
            parse(options_, peers::viewOf(texts.options));
            parse(params_, peers::viewOf(texts.params));
            parse(query_, peers::viewOf(texts.query));
            const std::string_view text = peers::viewOf(texts.body);
            if (!parse(body_, text) && !text.empty())
                body_.SetString(text.data(), static_cast<rapidjson::SizeType>(text.size()), allocator_);
        }
        const Node& options() const { return options_; }
        const Node& params() const { return params_; }
        const Node& query() const { return query_; }
        const Node& body() const { return body_; }

     private:
        static bool parse(rapidjson::Document& document, std::string_view text) {
            document.Parse(text.data(), text.size());
            if (!document.HasParseError()) return true;
            document.SetNull();
            return false;
        }

        rapidjson::Document::AllocatorType allocator_;
        rapidjson::Document options_{&allocator_}, params_{&allocator_}, query_{&allocator_}, body_{&allocator_};
    };

    static const Node* member(const Node& node, std::string_view name) {
        if (!node.IsObject()) return nullptr;
        const auto found =
            node.FindMember(Node(rapidjson::StringRef(name.data(), static_cast<rapidjson::SizeType>(name.size()))));
        return found == node.MemberEnd() ? nullptr : &found->value;
    }
    static bool isObject(const Node& node) { return node.IsObject(); }
    static bool isArray(const Node& node) { return node.IsArray(); }
    static bool isNumber(const Node& node) { return node.IsNumber(); }
    static std::size_t memberCount(const Node& node) { return node.MemberCount(); }
    static std::span<const Node> elements(const Node& node) { return {node.Begin(), node.Size()}; }
    static std::string_view text(const Node& node) {
        return node.IsString() ? std::string_view(node.GetString(), node.GetStringLength()) : std::string_view();
    }
    static double number(const Node& node) { return node.GetDouble(); }
    static std::uint32_t unsignedNumber(const Node& node) {
        return node.IsInt64() ? peers::unsignedNumber(node.GetInt64()) : peers::unsignedNumber(node.GetDouble());
    }

    static Text answer() {
        return answerWith([](Writer& writer) { writer.Null(); });
    }
    static Text answer(bool value) {
        return answerWith([&](Writer& writer) { writer.Bool(value); });
    }
    static Text answer(double value) {
        return answerWith([&](Writer& writer) { writer.Double(value); });
    }
    static Text answer(std::uint32_t value) {
        return answerWith([&](Writer& writer) { writer.Uint(value); });
    }
    static Text answer(const peers::Range& range) {
        return answerWith([&](Writer& writer) {
            writer.StartObject();
            writer.Key("min");
            writer.Uint(range.minimum);
            writer.Key("max");
            writer.Uint(range.maximum);
            writer.EndObject();
        });
    }
    static Text answer(const std::vector<peers::Address>& list) {
        return answerWith([&](Writer& writer) {
            writer.StartArray();
            for (const peers::Address& address : list) {
                writer.StartObject();
                writer.Key("serial");
                write(writer, peers::boundedText(address.serial));
                writer.Key("product");
                write(writer, peers::boundedText(address.product));
                writer.EndObject();
            }
            writer.EndArray();
        });
    }
    static Text answer(const peers::Failure& failure) {
        Text text;
        Writer writer(text);
        writer.StartObject();
        writer.Key("error");
        writer.StartObject();
        if (failure.code) {
            writer.Key("code");
            writer.Uint(failure.code);
            if (*failure.reason) {
                writer.Key("reason");
                writer.String(failure.reason);
            }
        }
        writer.Key("name");
        writer.String(failure.name);
        writer.Key("message");
        writer.String(failure.message);
        writer.EndObject();
        writer.Key("value");
        writer.Null();
        writer.EndObject();
        return text;
    }
    static Text answer(const DmCalibrationTarget& target) {
        return answerWith([&](Writer& writer) {
            writer.StartObject();
            writer.Key("accuracy");
            writer.Uint(target.accuracy);
            writer.Key("Lmax");
            writer.Double(target.Lmax);
            writer.Key("LminEnable");
            writer.Bool(target.LminEnable != 0);
            writer.Key("Lmin");
            writer.Double(target.Lmin);
            writer.Key("colorTemperature");
            writer.Uint(target.colorTemperature);
            writer.Key("whitePoint");
            writer.StartObject();
            writer.Key("x");
            writer.Double(target.whitePoint.x);
            writer.Key("y");
            writer.Double(target.whitePoint.y);
            writer.EndObject();
            writer.Key("displayFunction");
            writer.Uint(target.displayFunction);
            writer.Key("exp");
            writer.Uint(target.exp);
            writer.Key("userFileName");
            write(writer, peers::boundedText(target.userFileName));
            writer.Key("LambEnable");
            writer.Bool(target.LambEnable != 0);
            writer.Key("Lamb");
            writer.Double(target.Lamb);
            writer.Key("ambient");
            writer.Double(target.ambient);
            writer.Key("ambientSensor");
            writer.StartObject();
            writer.Key("name");
            write(writer, peers::boundedText(target.ambientSensor.name));
            writer.Key("serial");
            write(writer, peers::boundedText(target.ambientSensor.serial));
            writer.EndObject();
            writer.Key("lut");
            writer.StartArray();
            for (const double value : target.lut) writer.Double(value);
            writer.EndArray();
            writer.EndObject();
        });
    }

    static const char* characters(const Text& text) { return text.GetString(); }

 private:
    static void write(Writer& writer, std::string_view text) {
        writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
    }

    template <class WriteValue>
    static Text answerWith(WriteValue writeValue) {
        Text text;
        Writer writer(text);
        writer.StartObject();
        writer.Key("error");
        writer.Null();
        writer.Key("value");
        writeValue(writer);
        writer.EndObject();
        return text;
    }
};

}  // namespace

PEER_EXPORTS(RapidJson)
