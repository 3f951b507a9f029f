#pragma once

#include "pocketjson/Value.h"

namespace pocketjson {

/// Walks through the entries of one object or array, which outlives it.
class Entries {
 public:
    Entries() noexcept = default;
    explicit Entries(const Value& container) noexcept
        : members_(container.isObject() ? &container.members() : nullptr),
          element_(container.elements().data()),
          elementsEnd_(element_ + container.elements().size()) {
        if (isObject()) member_ = members_->begin();
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
    const Value::Members* members_;
    Value::Members::const_iterator member_;
    const Value* element_;
    const Value* elementsEnd_;
};

}  // namespace pocketjson
