#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "json/Nlohmann.h"

namespace bench {

/// The least that holds a document in std::string, std::map and std::vector, each made by itself, in its final size and
/// in order.
class Tree {
 public:
    using Members = std::map<std::string, Tree>;
    using Elements = std::vector<Tree>;

    explicit Tree(const Nlohmann::Document& document) {
        if (document.is_string()) {
            content_ = std::make_unique<std::string>(document.get_ref<const std::string&>());
        } else if (document.is_object()) {
            auto members = std::make_unique<Members>();
            for (auto member = document.begin(); member != document.end(); ++member)
                members->emplace_hint(members->end(), member.key(), Tree(member.value()));
            content_ = std::move(members);
        } else if (document.is_array()) {
            auto elements = std::make_unique<Elements>();
            elements->reserve(document.size());
            for (const auto& element : document) elements->emplace_back(element);
            content_ = std::move(elements);
        } else if (document.is_number()) {
            content_ = document.get<double>();
        }
    }

 private:
    std::variant<double, std::unique_ptr<std::string>, std::unique_ptr<Members>, std::unique_ptr<Elements>> content_;
};

}  // namespace bench
