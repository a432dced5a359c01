// Which poster templates of the server may be handed to printf.
#pragma once

#include <string_view>

namespace CAPosterFormat
{

// Whether `szTemplate` may be formatted with one int: at most one conversion, and that a plain integer one (d, i, u,
// o, x or X with flags, width and precision of at most three digits each; h and hh, but no length beyond int; no "*",
// no position). "%%" stands for a percent sign and may come any number of times.
bool IsUsable(std::string_view szTemplate);

}  // namespace CAPosterFormat
