// The monitor that a request is about, and the verbs in which resources speak to the monitor-control library.
//
// Every verb takes a function of libdmc.h, either itself (an import) or as NAMED(function), which is looked up when the
// verb is called and answers "FunctionNotFoundError" when the library is too old to have it. A verb adds the monitor's
// serial and product in front, calls the function and passes its result, together with the action text, through
// `checkMonitorControl`. Types are deduced from the C prototype; a function of the wrong shape does not compile.
#pragma once

#include <array>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

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
Function* resolve(Function* function) {
    return function;
}

template <class Function>
Function* resolve(NamedFunction<Function> function) {
    return libdmcLoader::instance()(function);
}

template <class Callable>
using PrototypeOf = MonitorPrototype<std::remove_pointer_t<decltype(resolve(std::declval<Callable>()))>>;

/// A function that answers a result code.
template <class Callable>
struct Checked : PrototypeOf<Callable> {
    static_assert(PrototypeOf<Callable>::isMonitorFunction,
                  "a monitor function takes the monitor's serial and product first");
    static_assert(std::is_same_v<typename PrototypeOf<Callable>::ResultType, DmResult>,
                  "a monitor function that is read or written answers a DmResult");
};

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
    Monitor(std::string serialText, std::string productText)
        : serial(std::move(serialText)), product(std::move(productText)) {}

    /// Whether a DmCtrlSupported... function answers non-zero. Its answer is no result code and is not checked.
    template <class Callable>
    bool supports(Callable function) const {
        return detail::resolve(function)(serial.c_str(), product.c_str()) != 0;
    }

    /// The value of the one out-parameter, or a tuple of several. Zero where the library wrote nothing.
    template <class Callable, class... Inputs>
    auto read(Callable function, const char* action, Inputs... inputs) const {
        using Parameters = typename detail::Checked<Callable>::Parameters;
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

    /// {"min", "max"}, and "step" when the function tells one.
    template <class Callable>
    pocketjson::Value range(Callable function, const char* action) const {
        const auto limits = read(function, action);
        pocketjson::Value value{{"min", std::get<0>(limits)}, {"max", std::get<1>(limits)}};
        if constexpr (std::tuple_size_v < decltype(limits) >> 2) value["step"] = std::get<2>(limits);
        return value;
    }

    /// Calls a function with all of its arguments.
    template <class Callable, class... Arguments>
    void write(Callable function, const char* action, Arguments... arguments) const {
        static_assert(std::tuple_size_v<typename detail::Checked<Callable>::Parameters> == sizeof...(Arguments),
                      "a monitor function is called with every argument after serial and product");
        checkMonitorControl(detail::resolve(function)(serial.c_str(), product.c_str(), arguments...), action);
    }

    const std::string serial;
    const std::string product;
};

}  // namespace torvo
