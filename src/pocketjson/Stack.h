#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <type_traits>

namespace pocketjson {

/// A stack of simple things which takes memory only for more than the usual number of them.
template <class T, std::size_t Usual>
class Stack {
    static_assert(std::is_trivially_copyable_v<T>);

 public:
    Stack() noexcept = default;
    Stack(const Stack&) = delete;
    Stack& operator=(const Stack&) = delete;

    /// The new item, which is not set yet.
    T& extend() {
        if (end_ == limit_) grow();
        return *end_++;
    }
    void push(const T& item) { extend() = item; }
    T pop() noexcept { return *--end_; }
    void cutTo(std::size_t size) noexcept { end_ = begin_ + size; }

    T& top() noexcept { return end_[-1]; }
    bool empty() const noexcept { return begin_ == end_; }
    std::size_t size() const noexcept { return static_cast<std::size_t>(end_ - begin_); }
    T* at(std::size_t index) noexcept { return begin_ + index; }

 private:
    void grow() {
        constexpr std::size_t kGrowth = 4;
        const std::size_t size = this->size();
        std::unique_ptr<T[]> larger(new T[kGrowth * size]);
        std::copy(begin_, end_, larger.get());
        many_ = std::move(larger);
        begin_ = many_.get();
        end_ = begin_ + size;
        limit_ = begin_ + kGrowth * size;
    }

    std::array<T, Usual> few_;
    std::unique_ptr<T[]> many_;
    T* begin_ = few_.data();
    T* end_ = begin_;
    T* limit_ = begin_ + Usual;
};

}  // namespace pocketjson
