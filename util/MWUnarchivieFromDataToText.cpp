#include "util/MWUnarchivieFromDataToText.h"

#include "platform/TextUnarchiver.h"

namespace quillow {

Boxed MWUnarchivieFromDataToText::transformedValue(const Boxed& value) const {
    const auto archive = value.data();
    return archive ? Boxed(unarchiver_.stringOfArchivedText(*archive)) : Boxed();
}

} // namespace quillow
