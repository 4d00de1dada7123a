#pragma once

#include "core/store/Record.h"

#include <QHash>
#include <QStringList>

/// A model of the catalogue.
struct Model {
    std::optional<QString> modelDscrptn; // the name, as stored in tank lines
    std::optional<QString> app;          // the application's code
    std::optional<QString> series;       // the series' code
    std::optional<QString> bladder;
    std::optional<bool> asme;
    std::optional<QString> nsf;
    std::optional<QString> iapmo;
    std::optional<double> tankVolume;       // gal a tank
    std::optional<double> acceptanceVolume; // gal a tank
    std::optional<double> tankOD;           // in
    std::optional<double> oal;              // in
    std::optional<QString> sysConnStd;
    std::optional<QString> sysConnType;
    std::optional<double> tankSysConn;    // in
    std::optional<double> tankWkPressure; // psig
    std::optional<double> minSysPressure; // psig
    std::optional<double> precharge;      // psig
    std::optional<double> shipWeight;     // lb
    std::optional<double> makeUpCapacity; // gpm
    std::optional<double> pumpHp;         // hp of one pump
    std::optional<QString> shell;
    std::optional<QString> finish;
    std::optional<double> maxTemp; // °F
    std::optional<QString> clearance;
    std::optional<QString> tankDraw;  // key of the drawing
    std::optional<QString> submittal; // key of the specification

    using Columns = std::span<const Record::Column<Model>>;
    static Columns columns();
    /// Name, application and measures, which lists of tanks show.
    static Columns measures();
};

namespace Catalogue {

/// A model of the catalogue by name; nothing if the catalogue does not have it. Throws DatabaseFault.
std::optional<Model> findModel(const QString& model);

/// The models with these names that the catalogue has, by case-folded name, in one statement; with only some
/// columns where the others are not needed. Throws DatabaseFault.
QHash<QString, Model> findModels(const QStringList& names, Model::Columns columns = Model::columns());

/// The models of a series, in catalogue order. Throws DatabaseFault.
std::vector<Model> modelsOf(const QString& series);

/// The name of the application with this code, such as "Expansion Tank"; empty for an unknown code. Throws
/// DatabaseFault.
QString applicationDescription(const QString& code);

} // namespace Catalogue
