// One visitor from several lambdas: `std::visit(Overloaded{...}, item)`.
#pragma once

namespace tessara {

template <typename... Cases>
struct Overloaded : Cases...
{
    using Cases::operator()...;
};
template <typename... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

} // namespace tessara
