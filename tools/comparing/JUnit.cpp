// One suite a file, in the order of the results.
#include "comparing/JUnit.h"

#include <algorithm>
#include <fstream>

#include "Printable.h"

namespace
{

// As text of XML: no control characters, which XML cannot hold, and bytes that are no UTF-8 escaped.
std::string Xml(const std::string& strText)
{
    std::string strResult;
    for (const char c : strText) {
        switch (c) {
            case '&':
                strResult += "&amp;";
                break;
            case '<':
                strResult += "&lt;";
                break;
            case '>':
                strResult += "&gt;";
                break;
            case '"':
                strResult += "&quot;";
                break;
            default:
                strResult += c;
        }
    }
    return strResult;
}

std::string Attribute(const char* szName, const std::string& strText)
{
    return std::string(" ") + szName + "=\"" + Xml(Host::Printable(strText)) + '"';
}

}  // namespace

bool WriteJUnit(const std::string& strFile, const std::vector<TestResult>& vResults)
{
    const auto Failed = [](const TestResult& stResult) { return !stResult.strFailure.empty(); };
    std::ofstream out(strFile, std::ios::binary);
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites>\n";
    for (auto it = vResults.begin(); it != vResults.end();) {
        const auto Other = [it](const TestResult& stResult) { return stResult.strSuite != it->strSuite; };
        const auto itEnd = std::find_if(it, vResults.end(), Other);
        out << "  <testsuite" << Attribute("name", it->strSuite) << " tests=\"" << itEnd - it << "\" failures=\""
            << std::count_if(it, itEnd, Failed) << "\">\n";
        for (; it != itEnd; ++it) {
            out << "    <testcase" << Attribute("classname", it->strSuite) << Attribute("name", it->strName);
            if (Failed(*it))
                out << "><failure message=\"the outcome is not what is expected\">" << Xml(it->strFailure)
                    << "</failure></testcase>\n";
            else
                out << "/>\n";
        }
        out << "  </testsuite>\n";
    }
    out << "</testsuites>\n";
    out.close();
    return out.good();
}
