#include "simulator/core/Scripts.h"

namespace simulator {

namespace {

int precision(const Script& script) {
    return !script.serial.empty() + !script.product.empty();
}

}  // namespace

void Scripts::add(Script script) {
    if (!script.times)
        std::erase_if(scripts_, [&](const Script& other) {
            return !other.times && other.function == script.function && other.serial == script.serial &&
                   other.product == script.product;
        });
    scripts_.push_back(std::move(script));
}

std::optional<Departure> Scripts::take(std::string_view function, std::string_view serial, std::string_view product) {
    const auto fits = [&](const Script& script) {
        return script.function == function && (script.serial.empty() || script.serial == serial) &&
               (script.product.empty() || script.product == product);
    };
    const Script* permanent = nullptr;
    for (auto script = scripts_.begin(); script != scripts_.end(); ++script) {
        if (!fits(*script)) continue;
        if (script->times) {
            auto taken = script->departure;
            if (--*script->times == 0) scripts_.erase(script);
            return taken;
        }
        if (!permanent || precision(*script) >= precision(*permanent)) permanent = &*script;
    }
    return permanent ? std::optional(permanent->departure) : std::nullopt;
}

}  // namespace simulator
