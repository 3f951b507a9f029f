// A step of a resource: a companion function beside the text of its action, which becomes the "reason" of a DmError.
#pragma once

namespace torvo {

template <class Callable>
struct Step {
    Callable function;
    const char* action;
};
template <class Callable>
Step(Callable, const char*) -> Step<Callable>;

}  // namespace torvo
