// Whether a poster's address becomes what its author meant.
#ifndef PARLO_POSTER_H
#define PARLO_POSTER_H

#include "findings/Report.h"

// `images` is an object that the library finishes an address from, of an item of the kind `szKind` as the library
// calls it there.
void CheckPoster(const Node& images, const char* szKind, CReport& report);

#endif
