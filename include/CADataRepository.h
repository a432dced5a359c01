// Every record and enumeration that the library fills or hands out. Start with ActionInfo.h, the record that
// a reply becomes; the others hold its parts.
//
// What holds for all records: they are plain values that own their texts and lists; copy and move them
// freely, and share one between threads only as you would share a std::string. Nothing in them throws but
// running out of memory. A text is the server's bytes unchanged (UTF-8 if the server kept to it; it may hold
// NUL bytes), empty when absent. A list keeps the order of the reply. A default is written at its field and
// nowhere else. "Filled from" names the key of the server's reply. A field that is said to be unfilled is
// carried and copied and never written by the library.
#ifndef PARLO_CADATAREPOSITORY_H
#define PARLO_CADATAREPOSITORY_H

#include "CADataRepository/ActionInfo.h"
#include "CADataRepository/Contents.h"
#include "CADataRepository/Enumerations.h"
#include "CADataRepository/Information.h"
#include "CADataRepository/SearchList.h"
#include "CADataRepository/TVControl.h"
#include "CADataRepository/Vocabulary.h"

#endif
