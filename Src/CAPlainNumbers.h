// Numbers as text, whatever locale the application has set.
#pragma once

#include <locale.h>

// While one lives, its thread writes numbers as the C locale does. The JSON library mends a decimal comma of the
// process's locale, but no other mark.
class CAPlainNumbers
{
public:
    CAPlainNumbers() : m_Before(uselocale(newlocale(LC_ALL_MASK, "C", nullptr))) {}  // that one is not allocated
    ~CAPlainNumbers() { uselocale(m_Before); }
    CAPlainNumbers(const CAPlainNumbers&) = delete;
    CAPlainNumbers& operator=(const CAPlainNumbers&) = delete;

private:
    locale_t m_Before;
};
