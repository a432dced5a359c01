// What the content items of a reply come to.
#ifndef PARLO_ITEMEFFECTS_H
#define PARLO_ITEMEFFECTS_H

#include "findings/Report.h"

// Reports on the elements of "tvcontent" of a reply whose command shows them.
void CheckItems(const Node& contents, CReport& report);

#endif
