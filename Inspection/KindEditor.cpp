#include "KindEditor.h"

namespace Nereo::Inspection {

namespace {

QString quoted(const QString& text)
{
    return QLatin1Char('"') + excerpt(text) + QLatin1Char('"');
}

using MakeEditor = std::unique_ptr<KindEditor> (*)(const EditedFile& file);

MakeEditor makerOf(FileKind kind)
{
    switch (kind) {
    case FileKind::ConfigurationText:
        return configurationTextEditor;
    case FileKind::ConfigurationXml:
        return configurationXmlEditor;
    case FileKind::Control:
        return controlFileEditor;
    case FileKind::Materials:
        return materialDatabaseEditor;
    default:
        return nullptr;
    }
}

} // namespace

KindEditor::~KindEditor() = default;

bool isEditable(FileKind kind)
{
    return makerOf(kind) != nullptr;
}

std::unique_ptr<KindEditor> editorFor(const EditedFile& file)
{
    return makerOf(file.kind())(file);
}

void refuseUnknown(const QString& address)
{
    throw Refusal(EditProblem::UnknownAddress,
                  quoted(address) + QLatin1String(" is no value of such a file"));
}

void refuseMissing(const QString& address)
{
    throw Refusal(EditProblem::NotThere,
                  quoted(address) + QLatin1String(" isn't in the file, and can't be added"));
}

void refuseRemoval(const QString& address)
{
    throw Refusal(EditProblem::NotRemovable,
                  quoted(address) + QLatin1String(" is neither a setting, nor a constant, nor a flag"));
}

void refuseDoubt()
{
    throw Refusal(EditProblem::Doubtful,
                  QStringLiteral("it can't be told for sure which bytes of the file are to change"));
}

void refuseText(const QString& text, const QString& why)
{
    throw Refusal(EditProblem::CannotCarry, quoted(text) + QLatin1Char(' ') + why);
}

} // namespace Nereo::Inspection
