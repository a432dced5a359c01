// Whether a poster's address becomes what its author meant.
#pragma once

#include "findings/Report.h"

// `images` is an object that the library finishes an address from; `nPreferred` the size code that it takes when it is
// on offer.
void CheckPoster(const Node& images, int nPreferred, CReport& report);
