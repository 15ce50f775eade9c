#include <NereoInspection/Edit.h>

#include "EditStep.h"
#include "NewTexts.h"
#include "Walker.h"

#include <NereoFileIO/WriteWhole.h>

#include <QHash>

#include <algorithm>
#include <iterator>
#include <limits>
#include <set>
#include <utility>

namespace Nereo::Inspection {

namespace {

/// Edits that are done one after the other, each on what the ones before have left.
class Work {
public:
    explicit Work(const EditedFile& file) : start_(file) {}

    void run(const std::vector<Edit>& edits)
    {
        for (const Edit& edit : edits)
            run(edit);
        flush();
        address_ = edits.size() == 1 ? edits.front().address : QString();
        checkFindings();
    }

    /// Of the edit at which it has come to an end.
    EditResult resultOf(const Refusal& refusal) const
    {
        EditResult result {refusal.problem(), address_, refusal.message()};
        const bool isAboutAddress =
            result.problem == EditProblem::UnknownAddress || result.problem == EditProblem::NotThere;
        if (isAboutAddress && file().find(address_) == nullptr)
            result.nearest = nearestAddress(address_, knownAddresses());
        if (!result.nearest.isEmpty())
            result.message += QStringLiteral("; did you mean \"%1\"?").arg(result.nearest);
        return result;
    }

    /// The file after all edits; none if there was nothing to do.
    std::unique_ptr<EditedFile> takeFile() { return std::move(changed_); }

    /// The edits, with the texts that they have written.
    const std::vector<Edit>& written() const { return written_; }

private:
    const KindEditor& editor()
    {
        if (!editor_)
            editor_ = editorFor(file());
        return *editor_;
    }

    /// Those of the file, and where one is to get a value those that may be added.
    QStringList knownAddresses() const
    {
        QStringList addresses;
        for (const Item& item : file().items())
            addresses.append(item.address);
        if (!isRemoval_) // so that an editor has been asked to add it
            addresses += editor_->addableAddresses();
        return addresses;
    }

    struct Setting {
        QString address;
        NewText text;
    };

    const EditedFile& file() const { return changed_ ? *changed_ : start_; }

    void run(const Edit& edit)
    {
        address_ = edit.address;
        isRemoval_ = !edit.text;
        const Item* item = file().find(edit.address);
        const bool canWait = item != nullptr && edit.text && pendingAddresses_.count(edit.address) == 0;
        if (!canWait) {
            flush();
            address_ = edit.address;
            item = file().find(edit.address);
        }
        if (edit.text && item != nullptr)
            put(*item, *edit.text);
        else if (edit.text)
            add(edit.address, *edit.text);
        else
            remove(edit.address, item);
    }

    /// Keeps the change of a value for later: many are done in one go.
    void put(const Item& item, const QString& given)
    {
        const NewText text = editor().newTextOf(item, given);
        pending_.push_back({item.address, text});
        pendingAddresses_.insert(item.address);
        written_.push_back({item.address, item.type == Item::Type::Text ? text.value.toString() : text.text});
        if (isNameOfMaterial(file().kind(), item.address))
            flush(); // since addresses change
    }

    void flush()
    {
        const std::vector<Setting> pending = std::exchange(pending_, {});
        pendingAddresses_.clear();
        if (pending.empty())
            return;
        try {
            take(stepOf(pending.data(), pending.size()));
        } catch (const Refusal&) {
            for (const Setting& setting : pending) { // which finds out the one that can't be done
                address_ = setting.address;
                take(stepOf(&setting, 1));
            }
        }
    }

    EditStep stepOf(const Setting* settings, std::size_t count)
    {
        EditStep step;
        for (std::size_t i = 0; i < count; ++i) {
            const auto& [address, text] = settings[i];
            const Item& item = *file().find(address);
            const Replacements replacements = editor().replace(item, text);
            step.replacements.insert(step.replacements.end(), replacements.begin(), replacements.end());
            step.set.emplace(&item, text);
            step.isRenamed = step.isRenamed || isNameOfMaterial(file().kind(), address);
        }
        return step;
    }

    void add(const QString& address, const QString& given)
    {
        Addition addition = editor().add(address, given);
        EditStep step;
        step.replacements = std::move(addition.replacements);
        step.added = std::move(addition.values);
        step.isRenamed = isNameOfMaterial(file().kind(), address);
        const NewText& text = step.added.front().text;
        written_.push_back({address, isText(text) ? text.value.toString() : text.text});
        take(step);
    }

    void remove(const QString& address, const Item* item)
    {
        if (item == nullptr)
            throw Refusal(EditProblem::NotThere,
                          QLatin1Char('"') + excerpt(address) + QLatin1String("\" isn't in the file"));
        Removal removal = editor().remove(*item);
        EditStep step;
        step.replacements = std::move(removal.replacements);
        step.removed = std::move(removal.addresses);
        written_.push_back({address, {}});
        take(step);
    }

    void take(const EditStep& step)
    {
        auto changed = std::make_unique<EditedFile>(
            file().input().path(), replaced(file().bytes(), step.replacements), file().kind());
        if (!hasDone(step, file(), *changed))
            refuse(step);
        isRenamed_ = isRenamed_ || step.isRenamed;
        editor_.reset();
        changed_ = std::move(changed);
    }

    static bool isText(const NewText& text) { return text.value.userType() == QMetaType::QString; }

    [[noreturn]] static void refuse(const EditStep& step)
    {
        const bool isOfTexts =
            std::any_of(step.set.begin(), step.set.end(), [&](const auto& one) { return isText(one.second); })
            || std::any_of(step.added.begin(), step.added.end(),
                           [&](const AddedValue& value) { return isText(value.text); });
        if (isOfTexts)
            throw Refusal(EditProblem::CannotCarry,
                          QStringLiteral("a load of the file wouldn't give such a text back"));
        refuseDoubt();
    }

    void checkFindings() const
    {
        if (!changed_)
            return;
        const QString finding = start_.newFindingIn(*changed_, isRenamed_);
        if (!finding.isEmpty())
            throw Refusal(EditProblem::NewFinding,
                          QStringLiteral("a check of the file would then find ") + finding);
        if (kindOf(start_.input()) == start_.kind() && kindOf(changed_->input()) != start_.kind())
            throw Refusal(EditProblem::NewFinding,
                          QStringLiteral("nothing in the file would tell any more of what kind it is"));
    }

    const EditedFile& start_;
    std::unique_ptr<EditedFile> changed_;
    std::unique_ptr<KindEditor> editor_; ///< of the file as it is
    std::vector<Setting> pending_;
    std::set<QString> pendingAddresses_;
    bool isRenamed_ = false;
    QString address_;
    bool isRemoval_ = false; ///< the edit of that address is one
    std::vector<Edit> written_;
};

} // namespace

class FileEdit::State {
public:
    State(const InputFile& input, FileKind kind) : path_(input.path()), kind_(kind)
    {
        problem_ = open(input);
    }

    const std::string& path() const { return path_; }
    const EditResult& problem() const { return problem_; }
    FileKind kind() const { return kind_; }
    const QByteArray& originalBytes() const { return original_; }
    const QByteArray& bytes() const { return file_ ? file_->bytes() : original_; }

    std::optional<QString> value(const QString& address) const
    {
        const Item* const item = file_ ? file_->find(address) : nullptr;
        return item == nullptr ? std::nullopt : std::optional(shownText(*item));
    }

    EditResult apply(const std::vector<Edit>& edits)
    {
        if (!file_)
            return problem_;
        Work work(*file_);
        try {
            work.run(edits);
        } catch (const Refusal& refusal) {
            return work.resultOf(refusal);
        }
        if (std::unique_ptr<EditedFile> changed = work.takeFile()) {
            note(work.written());
            file_ = std::move(changed);
        }
        return {};
    }

    std::vector<ValueChange> changes() const
    {
        std::vector<ValueChange> changes;
        std::copy_if(changes_.begin(), changes_.end(), std::back_inserter(changes),
                     [](const ValueChange& change) { return change.before != change.after; });
        return changes;
    }

private:
    EditResult open(const InputFile& input)
    {
        if (!input.isOpen())
            return {EditProblem::CannotOpen, {}, input.errorString()};
        if (kind_ == FileKind::Unknown)
            kind_ = kindOf(input);
        if (!isEditable(kind_))
            return {EditProblem::NotEditable,
                    {},
                    QLatin1String("only configurations, control files and material databases can be edited")};
        if (input.size() > std::numeric_limits<int>::max() / 2)
            return {EditProblem::CannotOpen, {}, QLatin1String("the file is too large")};
        const auto device = input.openBytes();
        original_ = device->readAll();
        if (InputFile::hasFailed(*device))
            return {EditProblem::CannotOpen, {}, device->errorString()};
        file_ = std::make_unique<EditedFile>(input.path(), original_, kind_);
        return {};
    }

    /// Keeps what the addresses had before.
    void note(const std::vector<Edit>& edits)
    {
        std::vector<ValueChange> changes = changes_;
        QHash<QString, std::size_t> places = places_;
        for (const Edit& edit : edits) {
            const auto known = places.constFind(edit.address);
            if (known != places.constEnd()) {
                changes[*known].after = edit.text;
                continue;
            }
            places.insert(edit.address, changes.size());
            changes.push_back({edit.address, value(edit.address), edit.text});
        }
        changes_.swap(changes);
        places_.swap(places);
    }

    std::string path_;
    FileKind kind_;
    EditResult problem_;
    QByteArray original_;
    std::unique_ptr<EditedFile> file_;
    std::vector<ValueChange> changes_;
    QHash<QString, std::size_t> places_; ///< in these, of the addresses
};

FileEdit::FileEdit(const std::string& path, FileKind kind)
    : state_(std::make_unique<State>(InputFile(path), kind))
{
}

FileEdit::FileEdit(const std::string& name, const QByteArray& bytes, FileKind kind)
    : state_(std::make_unique<State>(InputFile(name, bytes), kind))
{
}

FileEdit::FileEdit(FileEdit&& other) noexcept = default;
FileEdit& FileEdit::operator=(FileEdit&& other) noexcept = default;
FileEdit::~FileEdit() = default;

EditResult FileEdit::state() const
{
    return state_->problem();
}

FileKind FileEdit::kind() const
{
    return state_->kind();
}

std::optional<QString> FileEdit::value(const QString& address) const
{
    return state_->value(address);
}

EditResult FileEdit::set(const QString& address, const QString& text)
{
    return state_->apply({
        {address, text}
    });
}

EditResult FileEdit::set(const QString& address, int value)
{
    return set(address, QString::number(value));
}

EditResult FileEdit::set(const QString& address, double value)
{
    return set(address, shortestText(value));
}

EditResult FileEdit::remove(const QString& address)
{
    return state_->apply({
        {address, std::nullopt}
    });
}

EditResult FileEdit::apply(const std::vector<Edit>& edits)
{
    return state_->apply(edits);
}

std::vector<ValueChange> FileEdit::changes() const
{
    return state_->changes();
}

const QByteArray& FileEdit::originalBytes() const
{
    return state_->originalBytes();
}

const QByteArray& FileEdit::bytes() const
{
    return state_->bytes();
}

Io::SaveResult FileEdit::save() const
{
    return saveTo(state_->path());
}

Io::SaveResult FileEdit::saveTo(const std::string& path) const
{
    if (!state())
        return {Io::SaveResult::NoWriter, state().message.toStdString()};
    return Io::writeWhole(path,
                          [this](QIODevice& device) { return device.write(bytes()) == bytes().size(); });
}

} // namespace Nereo::Inspection
