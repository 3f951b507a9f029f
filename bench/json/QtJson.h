#pragma once

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <stdexcept>

#include "json/Library.h"

namespace bench {

/// Qt's documents are objects and arrays. Any other value is read and written as the one element of an array, which is
/// what is left to somebody who needs it.
struct QtJson {
    static constexpr const char* name = "Qt";
    struct Document {
        QJsonDocument json;
        bool isElement;
    };
    using Text = QByteArray;

    static Document parse(const std::string& text) {
        const auto start = text.find_first_not_of(" \t\r\n");
        const bool isElement = start != std::string::npos && text[start] != '{' && text[start] != '[';
        QJsonParseError error;
        const auto json = isElement ? QJsonDocument::fromJson(QByteArray::fromStdString('[' + text + ']'), &error)
                                    : QJsonDocument::fromJson(bytes(text), &error);
        if (json.isNull()) throw std::runtime_error(error.errorString().toStdString());
        return {json, isElement};
    }

    static Text write(const Document& document) {
        const auto text = document.json.toJson(QJsonDocument::Compact);
        return document.isElement ? text.mid(1, text.size() - 2) : text;
    }
    static std::string_view view(const Text& text) { return {text.data(), static_cast<std::size_t>(text.size())}; }

    static double readAll(const Document& document) {
        return document.json.isObject() ? readAll(document.json.object()) : readAll(document.json.array());
    }
    static double readAll(const QJsonObject& object) {
        double sum = 0;
        for (auto member = object.begin(); member != object.end(); ++member)
            sum += 1 + readAll(object.value(member.key()));
        return sum;
    }
    static double readAll(const QJsonArray& array) {
        double sum = 0;
        for (const auto element : array) sum += readAll(element);
        return sum;
    }
    static double readAll(const QJsonValue& value) {
        switch (value.type()) {
            case QJsonValue::Object:
                return readAll(value.toObject());
            case QJsonValue::Array:
                return readAll(value.toArray());
            case QJsonValue::String:
                return value.toString().isEmpty() ? 0 : 1;
            case QJsonValue::Bool:
                return value.toBool();
            default:
                return value.toDouble();
        }
    }

    static void copyAndChange(const Document& document) {
        if (document.json.isObject()) {
            auto copy = document.json.object();
            copy.insert(QLatin1String("changed"), 1);
        } else if (auto copy = document.json.array(); !copy.isEmpty()) {
            copy.replace(0, 1);
        }
    }

 private:
    static QByteArray bytes(const std::string& text) {
        return QByteArray::fromRawData(text.data(), static_cast<qsizetype>(text.size()));
    }
};

static_assert(JsonLibrary<QtJson>);

}  // namespace bench
