#include "FieldList.h"

#include "Walker.h"

#include <FileIO/ResultsFileHeaderReader.h>
#include <FileIO/ResultsFileWalk.h>
#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/FieldVariable.h>

#include <QDataStream>

#include <bitset>

namespace Nereo::Inspection {

namespace {

namespace Layout = Io::ResultsLayout;

int codeOf(const QString& name)
{
    return Io::CodeNameTable::instance().codeForName(name);
}

/// Takes the fields out of a walk.
class FieldListener : public Listener {
public:
    explicit FieldListener(FieldList& list)
        : fields_(list.fields), error_(list.error), columnCount_(list.header.fieldCount())
    {
    }

    bool wantsItems() const override { return true; }

    void finding(const Discovery& discovery) override
    {
        if (discovery.rule == Rule::CannotRead)
            error_ = discovery.found;
    }

    void item(const Item& item) override
    {
        if (item.type != Item::Type::Field)
            return;
        const auto column = int((item.place.offset - Layout::fieldNamesOffset) / Layout::fieldNameSize);
        if (column >= columnCount_)
            return; // the file has changed since its header was read
        int code = codeOf(item.spelling);
        if (code != Io::kNone && met_.test(std::size_t(code)))
            code = Io::kNone; // a repetition
        met_.set(std::size_t(code));
        const bool isListed = fields_.size() < std::size_t(Io::ResultsFileHeader::mostFieldsListed);
        if (code != Io::kNone || isListed)
            fields_.push_back({item.address, code, column});
    }

private:
    std::vector<ListedField>& fields_;
    QString& error_;
    const int columnCount_;
    std::bitset<512> met_; // codes
};

} // namespace

FieldList::FieldList(const InputFile& file)
{
    const auto device = file.open(QIODevice::NotOpen);
    QDataStream in(device.get());
    Io::ResultsFileWalk walk(in);
    constexpr int noneButKnown = 0;
    Io::ResultsFileHeaderReader(header, noneButKnown).read(walk, file.size());
    if (InputFile::hasFailed(*device))
        error = device->errorString();
    FieldListener listener(*this);
    walkResults(file, listener);
    for (std::size_t i = 0; i < fields.size(); ++i)
        places_.insert(fields[i].key(), int(i));
}

const ListedField* FieldList::find(const ListedField& field) const
{
    const auto found = places_.find(field.key());
    return found == places_.end() ? nullptr : &fields[std::size_t(*found)];
}

QString ListedField::key() const
{
    return code == Io::kNone ? address : QLatin1Char('/') + QString::number(code); // no address has a slash
}

bool isNamed(const ListedField& field, const QString& name)
{
    return field.address == name || (field.code != Io::kNone && field.code == codeOf(name));
}

} // namespace Nereo::Inspection
