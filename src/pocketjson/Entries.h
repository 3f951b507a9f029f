#pragma once

#include "pocketjson/Value.h"

namespace pocketjson {

/// Walks through the entries of one object or array, which outlives it.
class Entries {
 public:
    Entries() noexcept = default;  ///< Of nothing.
    explicit Entries(const Value& container) noexcept {
        if (container.isObject()) {
            members_ = &container.members();
            member_ = members_->begin();
        } else {
            element_ = container.elements().data();
            elementsEnd_ = element_ + container.elements().size();
        }
    }

    bool isObject() const noexcept { return members_ != nullptr; }
    bool atEnd() const noexcept { return isObject() ? member_ == members_->end() : element_ == elementsEnd_; }
    const std::string& name() const noexcept { return member_->first; }  ///< Of objects only.
    const Value& value() const noexcept { return isObject() ? member_->second : *element_; }
    void advance() noexcept {
        if (isObject())
            ++member_;
        else
            ++element_;
    }

 private:
    const Value::Members* members_ = nullptr;
    Value::Members::const_iterator member_;
    const Value* element_ = nullptr;
    const Value* elementsEnd_ = nullptr;
};

}  // namespace pocketjson
