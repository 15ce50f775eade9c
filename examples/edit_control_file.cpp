// Changes one relaxation factor of a control file, whoever wrote it: edit_control_file FILE VARIABLE FACTOR
//
// A load and a save would lose the materials, the comments behind the values and all that the library doesn't
// know. This changes the bytes of the number alone, and the file is at every moment the old one or the new
// one.

#include <NereoInspection/Edit.h>

#include <iostream>

using namespace Nereo::Inspection;

namespace {

std::ostream& operator<<(std::ostream& out, const std::optional<QString>& text)
{
    return out << (text ? text->toStdString() : "nothing");
}

int fail(const std::string& what)
{
    std::cerr << "edit_control_file: " << what << '\n';
    return 1;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4) {
        std::cerr << "usage: edit_control_file FILE VARIABLE FACTOR\n";
        return 2;
    }
    const std::string path = argv[1];
    const QString address = QStringLiteral("relaxation/%1/under").arg(QString::fromLocal8Bit(argv[2]));

    FileEdit file(path, FileKind::Control);
    if (const EditResult result = file.set(address, QString::fromLocal8Bit(argv[3])); !result)
        return fail(path + ": " + result.message.toStdString());
    if (const auto saved = file.save(); !saved)
        return fail("can't save " + path + ": " + saved.reason);
    for (const ValueChange& change : file.changes())
        std::cout << change.address.toStdString() << ": " << change.before << " -> " << change.after << '\n';
    return 0;
}
