#include "documents/specifications/Specifications.h"

#include "core/store/Gateway.h"

Specification readSpecification(const QString& key) {
    Specification specification;
    Connection connection = Gateway::openDatabase("Sys");
    Recordset row;
    row.Open("SELECT * FROM tblSpecMaster WHERE Submittal = ?", connection, {key});
    if (row.atEnd())
        return specification;
    for (int i = 1; i <= 10; ++i)
        specification.text += row["Spec" + QString::number(i)].text();
    specification.lastLine = row["LastLine"].text();
    for (int i = 0; i < 3; ++i)
        specification.description[i] = row["Description" + QString::number(i + 1)].text();
    return specification;
}
