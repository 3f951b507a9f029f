#include "host/Recording.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>

#include "host/Platform.h"

namespace host {

namespace {

constexpr int version = 1;

bool isWordLetter(char letter) {
    return std::isalnum(static_cast<unsigned char>(letter)) || letter == '_';
}

/// The JSON that a text is, if it is an object or a list.
Json structureOf(const std::string& text) {
    if (text.empty() || (text.front() != '{' && text.front() != '[')) return nullptr;
    return parseIfJson(text);
}

}  // namespace

Json recordingHead(const Json& scenario) {
    return {{"format", "pell-recording"}, {"version", version}, {"scenario", scenario}};
}

// ---- Redaction ------------------------------------------------------------------------------------------------------

Json Redaction::apply(const Json& line) {
    learn(line);
    auto redacted = line;
    replace(redacted);
    return redacted;
}

void Redaction::learn(const Json& line) {
    if (line.is_string()) {
        const auto inner = structureOf(line.get_ref<const std::string&>());
        if (inner.is_structured()) learn(inner);
    }
    if (!line.is_structured()) return;
    for (const auto& [name, value] : line.items()) {
        if (name == "serial" && value.is_string() && !value.get_ref<const std::string&>().empty()) {
            const auto number = std::to_string(serials_.size() + 1);
            serials_.try_emplace(value, "R" + std::string(7 - std::min<std::size_t>(7, number.size()), '0') + number);
        }
        learn(value);
    }
}

void Redaction::replace(Json& json) const {
    if (json.is_string()) {
        json = replaced(json);
    } else if (json.is_array()) {
        for (auto& part : json) replace(part);
    } else if (json.is_object()) {
        for (const auto& [name, value] : json.items()) {
            if (name == "text")
                replaceInText(value);
            else if (name == "texts" && value.is_array())
                for (auto& text : value) replaceInText(text);
            else
                replace(value);
        }
    }
}

/// Of a text that is JSON only the strings: a number may look like a serial, and stays.
void Redaction::replaceInText(Json& text) const {
    if (!text.is_string()) return replace(text);
    const auto inner = parseIfJson(text.get_ref<const std::string&>());
    if (inner.is_discarded()) return replace(text);
    auto redacted = inner;
    replace(redacted);
    if (redacted != inner) text = writeJson(redacted);
}

/// Whole words only: a serial may be as short as a digit.
std::string Redaction::replaced(const std::string& text) const {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const auto isStart = at == 0 || !isWordLetter(text[at - 1]) || !isWordLetter(text[at]);
        const auto found = std::find_if(serials_.begin(), serials_.end(), [&](const auto& entry) {
            const auto& serial = entry.first;
            const auto end = at + serial.size();
            return isStart && text.compare(at, serial.size(), serial) == 0 &&
                   (end == text.size() || !isWordLetter(text[end]) || !isWordLetter(text[end - 1]));
        });
        if (found == serials_.end()) {
            result += text[at++];
        } else {
            result += found->second;
            at += found->first.size();
        }
    }
    return result;
}

// ---- Writing --------------------------------------------------------------------------------------------------------

RecordingWriter::RecordingWriter(const std::filesystem::path& file, bool redacts, std::ostream& errors)
    : file_(file), stream_(file, std::ios::binary), errors_(errors), redacts_(redacts) {
    const auto head = recordingHead(simulator::currentScenario());
    stream_ << writeJson(redacts_ ? redaction_.apply(head) : head) << std::endl;
    if (!stream_) throw std::runtime_error("cannot write " + toUtf8(file));
}

void RecordingWriter::write(const Json& line) {
    const std::lock_guard lock(mutex_);
    if (!stream_) return;
    stream_ << writeJson(redacts_ ? redaction_.apply(line) : line) << std::endl;
    if (!stream_) errors_ << "The recording ends here: cannot write " << toUtf8(file_) << std::endl;
}

void RecordingWriter::finish() const {
    const std::lock_guard lock(mutex_);
    if (!stream_) throw std::runtime_error("the recording is incomplete");
}

}  // namespace host
