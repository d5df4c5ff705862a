#pragma once

#include <QWidget>

#include <string>

#include "Lumatile/settings/SettingsSaying.h"

namespace lumatile {

/// What the program is, which version, and under which licences it comes.
class AboutSectionView : public QWidget {
public:
    AboutSectionView(const std::string& version, const SettingsSaying& say,
                     QWidget* parent = nullptr);
};

}  // namespace lumatile
