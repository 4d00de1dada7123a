#pragma once

#include "core/base/Fault.h"
#include "core/store/Gateway.h"
#include "core/store/JobHeader.h"
#include "tests/support/OfficeDatabase.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <functional>

/// A test in an office of its own, as its user "anna".
class OnOffice : public testing::Test {
  protected:
    OnOffice() {
        home.installData();
        office.use();
    }

    /// What a routine fails with; an empty text if it does not.
    template<typename Expected = DatabaseFault>
    static QString failureOf(const std::function<void()>& body) {
        try {
            body();
        } catch (const Expected& fault) {
            return QString::fromUtf8(fault.what());
        }
        return {};
    }
    static QString value(const QString& sql) {
        Gateway::Rows rows("User", sql);
        return rows.atEnd() ? QString() : rows["V"].text();
    }
    static JobHeader headerOf(const QString& jobID) {
        JobHeader header;
        header.jobID = jobID;
        return header;
    }
    /// Makes the program use a database from now on.
    static void useAddress(const QString& address) {
        using namespace Registry;
        SetRegValue(AppRegistryKey(), "UserDatabase", address, RegistryType::Text);
    }

    TemporaryHome home;
    OfficeDatabase office;
};
