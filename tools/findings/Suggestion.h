// What somebody who wrote an unknown word or key may have meant.
#ifndef PARLO_SUGGESTION_H
#define PARLO_SUGGESTION_H

#include <string>
#include <string_view>
#include <vector>

// Whether two words differ at most in case, blanks, underscores and hyphens.
bool AreAlike(std::string_view szOne, std::string_view szOther);

// The one of `vWords` that is most like `szWord`; empty when none is like it.
std::string_view MostAlike(std::string_view szWord, const std::vector<std::string_view>& vWords);

// The first of `vWords` that `szWord` may be short for: all its characters are there in order, the first one first.
std::string_view Abbreviated(std::string_view szWord, const std::vector<std::string_view>& vWords);

// "did you mean \"volumeup\"?"; empty for an empty word.
std::string DidYouMean(std::string_view szWord);

#endif
