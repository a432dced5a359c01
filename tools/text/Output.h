// Standard output, what the program says on standard error, and whether something failed.
#pragma once

#include <string>

// Writes to standard output, FlushOutput what is still buffered. Both throw std::system_error when that fails, unless
// it is a pipe whose reader is gone: then nothing is written any more, and whatever is found counts all the same.
void Print(const std::string& strText);
void FlushOutput();

// For a command that only prints, between two things that it prints: throws std::system_error when the reader is gone.
void StopWithoutReader();

// Writes "parlo: `strText`." (a question keeps its mark instead) to standard error, fit for a terminal and behind what
// was printed before.
void Complain(const std::string& strText);

// Complains of something for which the program ends with a failure, and goes on.
void Fail(const std::string& strText);

// The same without words, where standard output says it; whether anything failed so far.
void NoteFailure();
bool HasFailed();
