// What becomes of an action word, asked of the library itself with commands that carry every parameter.
#ifndef PARLO_ACTIONFACTS_H
#define PARLO_ACTIONFACTS_H

#include <string>
#include <vector>

struct ActionFacts {
    std::string strWord;
    int nCode = 0;                    // of the word
    int nCodeWithout = 0;             // that the record gets without parameters; 0: none
    std::string strLookup;            // which one answers: "system", "channel", "candidate", "none"
    std::vector<std::string> vTakes;  // keys of "params", in the order of the record's parameters
    std::vector<std::string> vFills;  // fields of the record that only some actions fill
    std::vector<std::string> vAfter;  // words that it may follow as second command
};

// The facts of every action word, in the vocabulary's order. Needs a service; writes nothing to the log.
std::vector<ActionFacts> AllActionFacts();

#endif
