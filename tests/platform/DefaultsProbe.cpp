// A second process that uses the same settings file. "write FILE" stores one value of each type, "read FILE" prints
// them, "churn FILE" writes until it is killed.
#include "platform/qt/storage/BoxedText.h"
#include "platform/qt/storage/QtDefaults.h"
#include "tests/platform/DefaultsSample.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char** argv) {
    using namespace quillow;
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) return 2;
    QtDefaults defaults(arguments[2]);
    const Boxed::Dictionary sample = defaultsSample();
    if (arguments[1] == u"write") {
        for (auto entry = sample.cbegin(); entry != sample.cend(); ++entry)
            defaults.setObject(entry.value(), entry.key());
    } else if (arguments[1] == u"read") {
        for (auto entry = sample.cbegin(); entry != sample.cend(); ++entry)
            std::printf("%s\n", textFromBoxed(defaults.objectForKey(entry.key())).toLatin1().constData());
    } else {
        for (int number = 0;; ++number)
            defaults.setObject(QString(1 + number % 50000, u'x'), QStringLiteral("churned"));
    }
    return 0;
}
