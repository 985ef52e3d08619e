#include "config/qt/ScratchStore.h"

#include <QSettings>

namespace corvel::test {

ScratchStore::ScratchStore() {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                       QString::fromStdString(directory_.path()));
}

ScratchStore::~ScratchStore() = default;

bool ScratchStore::has(const std::string& key) const {
    return directory_.read("Voskar Drennix/Corvel2.conf").find("\n" + key + "=") != std::string::npos;
}

} // namespace corvel::test
