#include "core/store/Specification.h"

#include "core/store/Gateway.h"

using namespace Gateway;

namespace Catalogue {

Specification readSpecification(const QString& key) {
    Specification specification;
    Rows row("Sys", "SELECT * FROM tblSpecMaster WHERE Submittal = ?", {key});
    if (row.atEnd())
        return specification;
    for (int i = 1; i <= 10; ++i)
        specification.text += row["Spec" + QString::number(i)].text();
    specification.lastLine = row["LastLine"].text();
    for (int i = 0; i < 3; ++i)
        specification.description[i] = row["Description" + QString::number(i + 1)].text();
    return specification;
}

QString reportOf(const QString& submittal) {
    Rows specification("Sys", "SELECT Report FROM tblSpecMaster WHERE Submittal = ?", {submittal});
    return specification.atEnd() ? QString() : specification["Report"].text();
}

} // namespace Catalogue
