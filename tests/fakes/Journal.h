// What several fakes were told, in one order: for tests of "this before that".
#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <utility>

namespace quillow {

class Journal {
public:
    void add(const QString& entry) {
        entries_.append(entry);
        if (handler_) handler_(entry);
    }
    /// Called at every entry, in the midst of what is entered.
    void onEntry(std::function<void(const QString& entry)> handler) { handler_ = std::move(handler); }
    [[nodiscard]] const QStringList& entries() const { return entries_; }
    void clear() { entries_.clear(); }

private:
    QStringList entries_;
    std::function<void(const QString&)> handler_;
};

/// A fake that enters what it is told into a journal from when the test asks for it.
class Recorded {
public:
    void recordIn(Journal& journal, const QString& name = {}) {
        journal_ = &journal;
        name_ = name;
    }
    void stopRecording() { journal_ = nullptr; }

protected:
    ~Recorded() = default;
    void record(const QString& entry) const {
        if (journal_) journal_->add(name_.isEmpty() ? entry : name_ + QStringLiteral(": ") + entry);
    }

private:
    Journal* journal_ = nullptr;
    QString name_;
};

} // namespace quillow
