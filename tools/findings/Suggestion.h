// What somebody who wrote an unknown word or key may have meant.
#pragma once

#include <string>
#include <string_view>
#include <vector>

// The one of `vWords` that is most like `szWord`, with `nMost` slips at most; empty when none is like it.
std::string_view MostAlike(std::string_view szWord, const std::vector<std::string_view>& vWords, std::size_t nMost = 3);

// The one of `vWords` that is `szWord` but for a part that means the same: "channel_no" for "channel_number".
std::string_view SameMeaning(std::string_view szWord, const std::vector<std::string_view>& vWords);

// The first of `vWords` that is like `szWord` in any of these ways.
std::string_view Nearest(std::string_view szWord, const std::vector<std::string_view>& vWords);

// "did you mean \"volumeup\"?" behind `szBefore`; empty for an empty word.
std::string DidYouMean(std::string_view szWord, const char* szBefore = "");
