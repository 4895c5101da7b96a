// The defaults store: a settings file with its own format (DefaultsFile.h). The format keeps types and absent values,
// and a foreign file can do no more harm than be refused.
#pragma once

#include "platform/Defaults.h"

namespace quillow {

class QtDefaults final : public Defaults {
public:
    /// The first value that is set creates the file. If an existing file cannot be read completely, one line on
    /// standard error reports it and its readable values apply. It is moved aside ("FILE.damaged") before the first
    /// value is written.
    explicit QtDefaults(const QString& filePath);

    [[nodiscard]] Boxed objectForKey(const QString& key) const override;
    /// Replaces the whole file atomically; the value is on disk when this returns. A value that cannot be written is
    /// valid for this run.
    void setObject(const Boxed& value, const QString& forKey) override;
    void registerDefaults(const Boxed::Dictionary& registrationDictionary) override;
    /// Also loads the values that another process has written.
    void synchronize() override;

    /// "org.quillow.Quillow/defaults.ini" in the user's configuration folder.
    [[nodiscard]] static QString standardFilePath();

private:
    enum class DiskState { whole, damaged, unreadable };
    struct Disk {
        Boxed::Dictionary values;
        DiskState state = DiskState::whole;
    };

    [[nodiscard]] Disk readDisk();
    [[nodiscard]] bool write(const Boxed::Dictionary& values) const;
    void warnOnce(const QString& line);

    QString filePath_;
    Boxed::Dictionary registered_;
    Boxed::Dictionary values_;
    /// Values that were set but are not on disk; nil for a key to remove.
    Boxed::Dictionary unwritten_;
    bool hasWarned_ = false;
};

} // namespace quillow
