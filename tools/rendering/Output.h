// Standard output, and what the program says on standard error.
#ifndef PARLO_OUTPUT_H
#define PARLO_OUTPUT_H

#include <string>

// Writes to standard output, FlushOutput what is still buffered. Both throw std::system_error when that fails.
void Print(const std::string& strText);
void FlushOutput();

// Writes "parlo: `strText`." to standard error, fit for a terminal.
void Complain(const std::string& strText);

#endif
