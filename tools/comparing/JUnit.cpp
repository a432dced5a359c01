// One suite a file, in the order of the results.
#include "comparing/JUnit.h"

#include <algorithm>
#include <fstream>
#include <string_view>

#include "Printable.h"

namespace
{

// What XML has a meaning for, or cannot hold although it is UTF-8 and no control character.
constexpr std::string_view kEscapes[][2] = {{"&", "&amp;"},
                                            {"<", "&lt;"},
                                            {">", "&gt;"},
                                            {"\"", "&quot;"},
                                            {"\xEF\xBF\xBE", "\\xEF\\xBF\\xBE"},
                                            {"\n", "&#10;"},
                                            {"\xEF\xBF\xBF", "\\xEF\\xBF\\xBF"}};

// `strText`, which is fit for a terminal, as text of XML.
std::string Xml(const std::string& strText)
{
    std::string strResult;
    for (std::string_view szRest = strText; !szRest.empty();) {
        const auto Begins = [szRest](const auto& szEscape) {
            return szRest.substr(0, szEscape[0].size()) == szEscape[0];
        };
        const auto* const pEscape = std::find_if(std::begin(kEscapes), std::end(kEscapes), Begins);
        const bool bEscape = pEscape != std::end(kEscapes);
        strResult += bEscape ? (*pEscape)[1] : szRest.substr(0, 1);
        szRest.remove_prefix(bEscape ? (*pEscape)[0].size() : 1);
    }
    return strResult;
}

std::string Attribute(const char* szName, const std::string& strText)
{
    return std::string(" ") + szName + "=\"" + Xml(Host::Printable(strText)) + '"';
}

std::string CaseText(const TestResult& stResult)
{
    std::string strInner = stResult.bSkipped ? "<skipped message=\"nothing is expected\"/>" : "";
    for (const std::string& strFailure : stResult.vFailures)
        strInner += "\n      <failure message=\"" + Xml(strFailure) + "\"/>";
    return "    <testcase" + Attribute("classname", stResult.strFile) + Attribute("name", stResult.strName) +
           Attribute("file", stResult.strFile) + Attribute("line", std::to_string(stResult.nLine)) +
           Attribute("time", std::to_string(stResult.dSeconds)) + '>' + strInner + "</testcase>\n";
}

}  // namespace

bool WriteJUnit(const std::string& strFile, const std::vector<TestResult>& vResults)
{
    const auto Failed = [](const TestResult& stResult) { return !stResult.vFailures.empty(); };
    const auto Skipped = [](const TestResult& stResult) { return stResult.bSkipped; };
    std::ofstream out(strFile, std::ios::binary);
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites>\n";
    for (auto it = vResults.begin(); it != vResults.end();) {
        const auto Other = [it](const TestResult& stResult) { return stResult.strFile != it->strFile; };
        const auto itEnd = std::find_if(it, vResults.end(), Other);
        out << "  <testsuite" << Attribute("name", it->strFile) << " tests=\"" << itEnd - it << "\" failures=\""
            << std::count_if(it, itEnd, Failed) << "\" skipped=\"" << std::count_if(it, itEnd, Skipped) << "\">\n";
        for (; it != itEnd; ++it) out << CaseText(*it);
        out << "  </testsuite>\n";
    }
    out << "</testsuites>\n";
    out.close();
    return out.good();
}
