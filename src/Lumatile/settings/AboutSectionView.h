#pragma once

#include <QWidget>

#include <string>

#include "Lumatile/widgets/Saying.h"

namespace lumatile {

/// What the program is, which version, and under which licences it comes.
class AboutSectionView : public QWidget {
public:
    AboutSectionView(const std::string& version, const Saying& say, QWidget* parent = nullptr);
};

}  // namespace lumatile
