// The monitor that a request is about, and the verbs in which resources speak to the monitor-control library.
//
// Every verb takes a function of libdmc.h, either itself (an import) or as NAMED(function), which is looked up when the
// verb is called and answers "FunctionNotFoundError" when the library is too old to have it. A verb adds the monitor's
// serial and product in front, calls the function and passes its result, together with the action text, through
// `checkMonitorControl`. Types are deduced from the C prototype; a function of the wrong shape does not compile.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "bridge/Errors.h"
#include "pocketjson/Value.h"
#include "runtime/Loaders.h"

namespace torvo {

namespace detail {

template <class Function>
struct MonitorPrototype {
    static constexpr bool isMonitorFunction = false;
};

template <class Result, class... Inputs>
struct MonitorPrototype<Result(const char*, const char*, Inputs...)> {
    static constexpr bool isMonitorFunction = true;
    using ResultType = Result;
    using Parameters = std::tuple<Inputs...>;  // what follows serial and product
};

template <class Function>
Gated<Function> resolve(Function* function) noexcept {
    return gated(function);
}

template <class Function>
Gated<Function> resolve(NamedFunction<Function> function) {
    return libdmcLoader::instance()(function);
}

template <class Callable>
using PrototypeOf = MonitorPrototype<typename decltype(resolve(std::declval<Callable>()))::Function>;

template <class Callable>
struct MonitorFunction : PrototypeOf<Callable> {
    static_assert(PrototypeOf<Callable>::isMonitorFunction,
                  "a monitor function takes the monitor's serial and product first");
    static constexpr bool answersResult = std::is_same_v<typename PrototypeOf<Callable>::ResultType, DmResult>;
};

/// What a function with one argument takes.
template <class Callable>
using Argument = std::tuple_element_t<0, typename MonitorFunction<Callable>::Parameters>;

/// The values that the out-parameters from the given position on point to.
template <class Parameters, std::size_t First, class Positions>
struct OutputValues;

template <class Parameters, std::size_t First, std::size_t... Position>
struct OutputValues<Parameters, First, std::index_sequence<Position...>> {
    template <std::size_t I>
    using Parameter = std::tuple_element_t<First + I, Parameters>;
    static_assert((std::is_pointer_v<Parameter<Position>> && ...),
                  "a monitor function is read with all of its inputs; what follows them must be out-parameters");
    using Tuple = std::tuple<std::remove_pointer_t<Parameter<Position>>...>;
};

}  // namespace detail

class Monitor {
 public:
    /// NUL-terminated, borrowed for the life of the monitor.
    Monitor(const char* serialText, const char* productText) noexcept : serial(serialText), product(productText) {}

    /// Calls a function with all of its arguments and returns its result, unchecked.
    template <class Callable, class... Arguments>
    auto call(Callable function, Arguments... arguments) const {
        static_assert(std::tuple_size_v<typename detail::MonitorFunction<Callable>::Parameters> == sizeof...(Arguments),
                      "a monitor function is called with every argument after serial and product");
        return detail::resolve(function)(serial, product, arguments...);
    }

    /// Calls a function with all of its arguments and checks its result.
    template <class Callable, class... Arguments>
    void write(Callable function, const char* action, Arguments... arguments) const {
        static_assert(detail::MonitorFunction<Callable>::answersResult,
                      "a monitor function that is read or written answers a DmResult");
        checkMonitorControl(call(function, arguments...), action);
    }

    /// Whether a DmCtrlSupported... function answers non-zero. Its answer is no result code and is not checked.
    template <class Callable, class... Inputs>
    bool supports(Callable function, Inputs... inputs) const {
        return call(function, inputs...) != 0;
    }

    /// The same where an answer with its top bit set is a failure, with this action text.
    template <class Callable>
    bool supportsChecked(Callable function, const char* action) const {
        const auto answer = call(function);
        checkMonitorControl(answer, action);
        return answer != 0;
    }

    /// Which of two generations of functions applies: true for the newer one, whose support function this is. By a name
    /// that the library lacks, it is the older one.
    template <class Callable>
    bool isNewer(Callable supportFunction) const {
        return isOffered(supportFunction) && supports(supportFunction);
    }

    /// Whether the library has the function.
    template <class Function>
    static bool isOffered(NamedFunction<Function> function) {
        return libdmcLoader::instance().find(function) != nullptr;
    }
    template <class Function>
    static bool isOffered(Function*) noexcept {
        return true;
    }

    /// Whether a function with one out-parameter can be read: support, where no function reports it.
    template <class Callable>
    bool canRead(Callable function) const {
        using Parameters = typename detail::MonitorFunction<Callable>::Parameters;
        typename detail::OutputValues<Parameters, 0, std::index_sequence<0>>::Tuple output{};
        return call(function, &std::get<0>(output)) >= 0;
    }

    /// The value of the one out-parameter, or a tuple of several. Zero where the library wrote nothing.
    template <class Callable, class... Inputs>
    auto read(Callable function, const char* action, Inputs... inputs) const {
        using Parameters = typename detail::MonitorFunction<Callable>::Parameters;
        constexpr std::size_t total = std::tuple_size_v<Parameters>;
        static_assert(total > sizeof...(Inputs), "a monitor function that is read has an out-parameter");
        using Positions = std::make_index_sequence<total - sizeof...(Inputs)>;
        typename detail::OutputValues<Parameters, sizeof...(Inputs), Positions>::Tuple outputs{};
        std::apply([&](auto&... output) { write(function, action, inputs..., &output...); }, outputs);
        if constexpr (std::tuple_size_v<decltype(outputs)> == 1)
            return std::get<0>(outputs);
        else
            return outputs;
    }

    /// {"min", "max"}, and "step" when the function has one.
    template <class Callable>
    pocketjson::Value range(Callable function, const char* action) const {
        const auto limits = read(function, action);
        constexpr bool hasStep = std::tuple_size_v<std::remove_const_t<decltype(limits)>> == 3;
        pocketjson::Value value{{"min", std::get<0>(limits)}, {"max", std::get<1>(limits)}};
        if constexpr (hasStep) value["step"] = std::get<2>(limits);
        return value;
    }

    /// The items of a function that ends in (items, count*): asked for their count first, then for the items. Never
    /// more than `mostItems`, nor than the library returned, whatever count it gave before.
    template <class Callable, class... Inputs>
    auto enumerate(Callable function, const char* action, Inputs... inputs) const {
        using Parameters = typename detail::MonitorFunction<Callable>::Parameters;
        static_assert(std::tuple_size_v<Parameters> == sizeof...(Inputs) + 2,
                      "a monitor function that is enumerated ends in its items and their count");
        using Item = std::remove_pointer_t<std::tuple_element_t<sizeof...(Inputs), Parameters>>;
        std::uint32_t count = 0;
        write(function, action, inputs..., static_cast<Item*>(nullptr), &count);
        count = std::min(count, mostItems<Item>);
        std::vector<Item> items(count);
        if (count > 0) write(function, action, inputs..., items.data(), &count);
        items.resize(std::min<std::size_t>(count, items.size()));
        return items;
    }

    /// The items of a function that ends in (items, count), where the count comes from elsewhere. Items that the
    /// library does not write are zero; beyond `mostItems` none are asked for.
    template <class Callable, class... Inputs>
    auto readList(Callable function, const char* action, std::uint32_t count, Inputs... inputs) const {
        using Parameters = typename detail::MonitorFunction<Callable>::Parameters;
        static_assert(std::tuple_size_v<Parameters> == sizeof...(Inputs) + 2,
                      "a monitor function that fills a list ends in its items and their count");
        using Item = std::remove_pointer_t<std::tuple_element_t<sizeof...(Inputs), Parameters>>;
        count = std::min(count, mostItems<Item>);
        std::vector<Item> items(count);
        write(function, action, inputs..., items.data(), count);
        return items;
    }

    /// The text of a function that ends in (buffer, size), in a buffer of the size that another function gave.
    template <class Callable, class... Inputs>
    std::string readText(std::uint32_t size, Callable function, const char* action, Inputs... inputs) const {
        std::string text(std::min(size, maximumText), '\0');
        write(function, action, inputs..., text.data(), static_cast<std::uint32_t>(text.size()));
        text.resize(std::min(text.find('\0'), text.size()));
        return text;
    }

    /// A list has no more items than this, and no more bytes.
    static constexpr std::uint32_t maximumItems = 1U << 20;
    static constexpr std::uint32_t maximumListBytes = 1U << 24;
    template <class Item>
    static constexpr std::uint32_t mostItems = std::min<std::uint32_t>(maximumItems,
                                                                       maximumListBytes / std::uint32_t{sizeof(Item)});

    /// A list whose items take calls of their own has no more of them than this.
    static constexpr std::uint32_t mostCalls = 1024;

    static constexpr std::uint32_t maximumText = 4096;

    const char* const serial;
    const char* const product;
};

}  // namespace torvo
