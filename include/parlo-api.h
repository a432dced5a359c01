// The voice application's interface to the library: four functions.
//
//     ca_initial_service("my-app");
//     CADataRepository::_ConvActionInfo info;                  // a fresh one for each reply
//     if (ca_get_speech_action("turn it up", strReply, info))  // strReply: the server's JSON
//         Act(info.eSystemAction, info.vSystemActionParam, info.strSysResponse);
//     ca_uninitial();
//
// Threads: make these calls one at a time. The library starts no thread and takes no lock of its own around
// a call; two calls at once, of whichever functions, are the caller's error and end in another reply's record or
// in a crash. They need not come from the same thread.
//
// Errors: no exception leaves these functions, whatever the reply holds and even when memory runs out. A
// function that fails has written one or more lines that say why to the platform log, tag "ParloAPI", and
// the next call works. That holds too when a call of the platform throws, or the calling thread is cancelled in one.
// A call needs 128 KiB of stack at most, beside what the functions of the platform use.
//
// The functions have C linkage, so that they can be looked up by name, but take C++ types: build the caller
// with the same C++ library. What a later version may change is in docs/integration.md.
#ifndef PARLO_API_H
#define PARLO_API_H

#if __cplusplus < 201703L
#error "parlo-api.h needs C++17 or later: compile with -std=c++17"
#endif

#include <string>

// C linkage hides from the linker that such a caller's texts and lists are others than the library's.
#ifdef _GLIBCXX_DEBUG
#error "the library's records have other lists than a caller with _GLIBCXX_DEBUG: use _GLIBCXX_ASSERTIONS instead"
#endif
#if defined(_GLIBCXX_USE_CXX11_ABI) && !_GLIBCXX_USE_CXX11_ABI
#error "the library's records have other texts than a caller with _GLIBCXX_USE_CXX11_ABI=0: compile with 1"
#endif

#include "CADataRepository.h"

#define PARLO_EXPORT __attribute__((visibility("default")))

// The library's version: 0.1.0 is 100, 1.2.3 would be 10203.
#define PARLO_API_VERSION_MAJOR 0
#define PARLO_API_VERSION_MINOR 1
#define PARLO_API_VERSION_PATCH 0
#define PARLO_API_VERSION (PARLO_API_VERSION_MAJOR * 10000 + PARLO_API_VERSION_MINOR * 100 + PARLO_API_VERSION_PATCH)

// The name under which a program that calls ca_get_speech_action asks for it: its number is that of the records'
// layout, so that the loader refuses a library of another one. Whoever looks the function up by name does so by this.
#define PARLO_API_SPEECH_ACTION "ca_get_speech_action_layout_1"

class CCAService;

extern "C" {

// Creates the service. `strAppName` is the application's name, for the log; it may be empty.
// Returns false when there is an initialised service already (which goes on unharmed), or memory runs out; then
// nothing is left that a second try would find in its way.
PARLO_EXPORT bool ca_initial_service(std::string strAppName);

// Releases the service and everything that it keeps, whatever fails meanwhile; afterwards ca_initial_service works
// again. Without a service it does nothing but say so in the log.
PARLO_EXPORT void ca_uninitial();

// Turns the utterance `strPreAllResult` and the server's JSON reply `strRawData` into what the TV does next.
//
// The caller owns `info` and passes a fresh one for each reply; see _ConvActionInfo for which fields are
// assigned. `strRawData` is read only. Both texts may have any length, but a reply of more than 524,288 values
// (counted by its ',', '[' and '{') or nested deeper than 128 levels is refused as if it were no JSON. What is in
// texts and comments, or behind the reply's value, does not count, and text behind it is not looked at. The process's
// locale, C's or C++'s, changes nothing.
//
// Returns false, with the reason in the log, when
// - there is no service, a text is empty, the reply is not JSON, lacks "rsp" or says that the server failed:
//   `info` is as it was, and nothing of the reply is kept;
// - the reply holds no TV control command: `info` has got strSysResponse, and the reply's dialog state, sentence,
//   domains, display control and content items wait for the next one, which overwrites what it brings itself. Content
//   items add up: they come before those of the next reply, until more than 4,096 wait and the next "tvcontent" drops
//   them;
// - an exception stopped it, as memory that ran out: `info` may be half filled, and nothing waits any more, of
//   this reply or of older ones, but the dialog state.
PARLO_EXPORT bool ca_get_speech_action(std::string strPreAllResult, std::string& strRawData,
                                       CADataRepository::_ConvActionInfo& info) __asm__(PARLO_API_SPEECH_ACTION);

// Says whether conversation is offered on this set, as an E_CA_CONV_STATUS: 0 available, 4 not supported by
// the set or in its country, 6 voice language does not fit the country, -1 no service, or a function of the platform
// threw. Asks the platform at each call; replies are processed whatever the answer.
PARLO_EXPORT int ca_get_conv_status();

}  // extern "C"

// The service, null while the library is not initialised. For the library's own tools; not for callers.
PARLO_EXPORT extern CCAService* m_pCAService;

#if __has_attribute(retain)
#define PARLO_KEPT __attribute__((used, retain))
#else
#define PARLO_KEPT __attribute__((used))
#endif

// A call alone may be looked up as late as when it is made; an address in writable memory is when the program is
// loaded. It is null, and asks for nothing, in a program that does not call the function.
static decltype(ca_get_speech_action) parlo_api_speech_action __attribute__((weakref(PARLO_API_SPEECH_ACTION)));
PARLO_KEPT static decltype(&ca_get_speech_action) parlo_api_layout = parlo_api_speech_action;

#endif
