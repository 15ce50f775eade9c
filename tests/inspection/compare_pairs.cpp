// compare_pairs: compares the pairs of files that standard input names, a line of six words each: the two
// files, the three tolerances (absolute, relative, peak; - for none) and the limit of memory. Prints the
// length of each JSON document and the document.

#include <NereoInspection/Comparison.h>

#include <iostream>
#include <string>

using namespace Nereo::Inspection;

namespace {

std::optional<double> toleranceIn(const std::string& word)
{
    return word == "-" ? std::nullopt : std::optional(std::stod(word));
}

} // namespace

int main()
{
    std::string a;
    std::string b;
    std::string absolute;
    std::string relative;
    std::string peak;
    ComparisonOptions options;
    while (std::cin >> a >> b >> absolute >> relative >> peak >> options.memoryLimit) {
        options.absolute = toleranceIn(absolute);
        options.relative = toleranceIn(relative);
        options.peak = toleranceIn(peak);
        const QByteArray json = toJson(compare(a, b, options));
        std::cout << json.size() << '\n' << json.constData();
    }
}
