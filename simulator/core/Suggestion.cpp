#include "simulator/core/Suggestion.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace simulator {

namespace {

char lower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

/// How many letters must be inserted, removed or replaced to make one text of the other.
std::size_t editDistance(std::string_view from, std::string_view to) {
    // The distances of what was read of `from` to each beginning of `to`.
    std::vector<std::size_t> distances(to.size() + 1);
    std::iota(distances.begin(), distances.end(), 0);
    for (const auto letter : from) {
        auto diagonal = distances[0]++;
        for (std::size_t i = 0; i < to.size(); ++i) {
            const auto replaced = diagonal + (lower(letter) != lower(to[i]));
            diagonal = distances[i + 1];
            distances[i + 1] = std::min({replaced, diagonal + 1, distances[i] + 1});
        }
    }
    return distances.back();
}

}  // namespace

std::string suggestion(std::string_view unknown, std::span<const std::string_view> known) {
    constexpr std::size_t maximumLength = 100;
    if (unknown.size() > maximumLength) return {};
    auto smallest = std::max<std::size_t>(unknown.size() / 3, 1) + 1;
    std::string_view nearest;
    for (const auto name : known) {
        const auto distance = editDistance(unknown, name);
        if (distance >= smallest) continue;
        smallest = distance;
        nearest = name;
    }
    return nearest.empty() ? "" : ", did you mean \"" + std::string(nearest) + "\"?";
}

}  // namespace simulator
