// The defaults store: a settings file of its own form (DefaultsFile.h), so that types and absence are kept and a file that
// somebody else has written cannot do more than be refused.
#pragma once

#include "platform/Defaults.h"

namespace quillow {

class QtDefaults final : public Defaults {
public:
    /// The file is made with the first value. One that cannot be read, or not wholly, is told of in one line on standard error,
    /// what is readable of it holds, and it is kept aside ("FILE.damaged") before the first value is written.
    explicit QtDefaults(const QString& filePath);

    [[nodiscard]] Boxed objectForKey(const QString& key) const override;
    /// On disk when it returns, the whole file replaced at once. What cannot be written holds for this run.
    void setObject(const Boxed& value, const QString& forKey) override;
    void registerDefaults(const Boxed::Dictionary& registrationDictionary) override;
    /// Also takes in what another process has written.
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
    /// What was set and is not on disk; nil for a key to remove.
    Boxed::Dictionary unwritten_;
    bool hasWarned_ = false;
};

} // namespace quillow
