// What the television provides to the library: the one place where its functions are declared.
//
// On a set these come from the set's own libraries, elsewhere from platform/host; a program that defines
// some of them itself overrides both.
#ifndef PARLO_CA_PLATFORM_H
#define PARLO_CA_PLATFORM_H

#ifdef __cplusplus
extern "C" {
#endif

#pragma GCC visibility push(default)  // whoever defines one of these means the library to find it

// Writes one record to the platform log; filters by priority itself. The result is ignored.
int __dlog_print(int priority, const char* tag, const char* format, ...) __attribute__((format(printf, 3, 4)));

// Reads a text of the configuration store. Null when the key is not there; else the caller frees it.
char* vconf_get_str(const char* key);

// The voice control settings. All return 0 for success; the caller frees the language.
int vc_setting_initialize();
int vc_setting_get_language(char** language);
int vc_setting_deinitialize();

// Reads one item of the factory data into `buffer`. Returns 0 when that failed. An item may be as large as
// 1008 bytes; the voice recognition flag is its first 32-bit integer.
int GetData(int item, void* buffer);

#pragma GCC visibility pop

#ifdef __cplusplus
}
#endif

#endif
