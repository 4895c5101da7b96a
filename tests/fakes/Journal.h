// Records the calls to several fakes in one list, so that tests can check their order.
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
    /// Sets a function that is called with each entry, during the recorded call.
    void onEntry(std::function<void(const QString& entry)> handler) { handler_ = std::move(handler); }
    [[nodiscard]] const QStringList& entries() const { return entries_; }
    void clear() { entries_.clear(); }

private:
    QStringList entries_;
    std::function<void(const QString&)> handler_;
};

/// Base of the fakes that record their calls in a journal after the test has called recordIn().
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
