// What somebody who wrote an unknown word or key may have meant.
#ifndef PARLO_SUGGESTION_H
#define PARLO_SUGGESTION_H

#include <string>
#include <string_view>
#include <vector>

// Whether two words differ at most in case, blanks, underscores and hyphens.
bool AreAlike(std::string_view szOne, std::string_view szOther);

// The one of `vWords` that is most like `szWord`, with `nMost` slips at most; empty when none is like it.
std::string_view MostAlike(std::string_view szWord, const std::vector<std::string_view>& vWords, std::size_t nMost = 3);

// The first of `vWords` that `szWord` may be short for: all its characters are there in order, the first one first.
std::string_view Abbreviated(std::string_view szWord, const std::vector<std::string_view>& vWords);

// The one of `vWords` that is `szWord` but for a part that means the same: "channel_no" for "channel_number".
std::string_view SameMeaning(std::string_view szWord, const std::vector<std::string_view>& vWords);

// The only one of `vWords` that `szWord` begins or ends with, or that begins or ends with it, at an underscore:
// "schedule_livecontent" for "schedule", "name" for "channel_name". A beginning of three letters may end anywhere.
std::string_view PartAlike(std::string_view szWord, const std::vector<std::string_view>& vWords);

// The first of `vWords` that is like `szWord` in any of these ways.
std::string_view Nearest(std::string_view szWord, const std::vector<std::string_view>& vWords);

// "did you mean \"volumeup\"?"; empty for an empty word.
std::string DidYouMean(std::string_view szWord);

#endif
