-- Texts compare without regard to the case of every letter, not only of A to Z. The collation is the program's own; it
-- stands in each text column, so each table is made anew with the rows that it has. The program runs this only when no
-- two keys have become one.

CREATE TABLE newtblUser (
    PostalCode TEXT(10) COLLATE LETTERS,
    FirstPostalCode TEXT(10) COLLATE LETTERS,
    DefaultEngineer TEXT(50) COLLATE LETTERS,
    DefaultContractor TEXT(50) COLLATE LETTERS,
    DefaultPSIa DOUBLE
);
INSERT INTO newtblUser (PostalCode, FirstPostalCode, DefaultEngineer, DefaultContractor, DefaultPSIa)
    SELECT PostalCode, FirstPostalCode, DefaultEngineer, DefaultContractor, DefaultPSIa
    FROM tblUser ORDER BY rowid;
DROP TABLE tblUser;
ALTER TABLE newtblUser RENAME TO tblUser;

CREATE TABLE newtblRepMaster (
    UserPostalCode TEXT(10) COLLATE LETTERS,
    CompanyName TEXT(100) COLLATE LETTERS,
    Address1 TEXT(100) COLLATE LETTERS,
    Address2 TEXT(150) COLLATE LETTERS,
    PhoneNo TEXT(30) COLLATE LETTERS,
    FAXNo TEXT(30) COLLATE LETTERS,
    "Default" BOOLEAN NOT NULL DEFAULT 0
);
INSERT INTO newtblRepMaster (UserPostalCode, CompanyName, Address1, Address2, PhoneNo, FAXNo, "Default")
    SELECT UserPostalCode, CompanyName, Address1, Address2, PhoneNo, FAXNo, "Default"
    FROM tblRepMaster ORDER BY rowid;
DROP TABLE tblRepMaster;
ALTER TABLE newtblRepMaster RENAME TO tblRepMaster;

CREATE TABLE newtblEngineer (fldName TEXT(50) COLLATE LETTERS);
INSERT INTO newtblEngineer (fldName)
    SELECT fldName
    FROM tblEngineer ORDER BY rowid;
DROP TABLE tblEngineer;
ALTER TABLE newtblEngineer RENAME TO tblEngineer;

CREATE TABLE newtblContractor (fldName TEXT(50) COLLATE LETTERS);
INSERT INTO newtblContractor (fldName)
    SELECT fldName
    FROM tblContractor ORDER BY rowid;
DROP TABLE tblContractor;
ALTER TABLE newtblContractor RENAME TO tblContractor;

CREATE TABLE newtblJobHeader (
    JobID TEXT(50) COLLATE LETTERS NOT NULL PRIMARY KEY,
    JobDscrptn TEXT(100) COLLATE LETTERS,
    Engineer TEXT(50) COLLATE LETTERS,
    Contractor TEXT(50) COLLATE LETTERS,
    JobInfo MEMO COLLATE LETTERS,
    DateCreated DATETIME
);
INSERT INTO newtblJobHeader (JobID, JobDscrptn, Engineer, Contractor, JobInfo, DateCreated)
    SELECT JobID, JobDscrptn, Engineer, Contractor, JobInfo, DateCreated
    FROM tblJobHeader ORDER BY rowid;
DROP TABLE tblJobHeader;
ALTER TABLE newtblJobHeader RENAME TO tblJobHeader;

CREATE TABLE newtblJobData (
    TankID TEXT(60) COLLATE LETTERS NOT NULL PRIMARY KEY,
    TankNo INTEGER,
    JobID TEXT(50) COLLATE LETTERS,
    DateCreated DATETIME,
    TankClass TEXT(10) COLLATE LETTERS,
    ModelNo TEXT(50) COLLATE LETTERS,
    Qty INTEGER,
    AtmPressure DOUBLE,
    SOPMin DOUBLE,
    SOPMax DOUBLE,
    SOTMin DOUBLE,
    SOTMax DOUBLE,
    SysFluidType TEXT(50) COLLATE LETTERS,
    TotSysVolume DOUBLE,
    RequiredVolume DOUBLE,
    RequiredAcceptance DOUBLE,
    PipeLength DOUBLE,
    PipeIndex TEXT(50) COLLATE LETTERS,
    FlowRate DOUBLE,
    FlowPressure DOUBLE,
    StaticPressure DOUBLE,
    ShockPressure DOUBLE,
    WaterVelocity DOUBLE,
    KineticEnergy DOUBLE,
    TotalKineticEnergy DOUBLE,
    LeakLoad DOUBLE,
    PumpRunTime DOUBLE,
    TagID01 TEXT(50) COLLATE LETTERS,
    TagID02 TEXT(50) COLLATE LETTERS,
    TagID03 TEXT(50) COLLATE LETTERS,
    TagID04 TEXT(50) COLLATE LETTERS,
    TagID05 TEXT(50) COLLATE LETTERS,
    TagID06 TEXT(50) COLLATE LETTERS,
    TagID07 TEXT(50) COLLATE LETTERS,
    TagID08 TEXT(50) COLLATE LETTERS,
    TagID09 TEXT(50) COLLATE LETTERS,
    TagID10 TEXT(50) COLLATE LETTERS
);
INSERT INTO newtblJobData (TankID, TankNo, JobID, DateCreated, TankClass, ModelNo, Qty, AtmPressure, SOPMin, SOPMax, SOTMin, SOTMax,
    SysFluidType, TotSysVolume, RequiredVolume, RequiredAcceptance, PipeLength, PipeIndex, FlowRate, FlowPressure,
    StaticPressure, ShockPressure, WaterVelocity, KineticEnergy, TotalKineticEnergy, LeakLoad, PumpRunTime,
    TagID01, TagID02, TagID03, TagID04, TagID05, TagID06, TagID07, TagID08, TagID09, TagID10)
    SELECT TankID, TankNo, JobID, DateCreated, TankClass, ModelNo, Qty, AtmPressure, SOPMin, SOPMax, SOTMin, SOTMax,
    SysFluidType, TotSysVolume, RequiredVolume, RequiredAcceptance, PipeLength, PipeIndex, FlowRate, FlowPressure,
    StaticPressure, ShockPressure, WaterVelocity, KineticEnergy, TotalKineticEnergy, LeakLoad, PumpRunTime,
    TagID01, TagID02, TagID03, TagID04, TagID05, TagID06, TagID07, TagID08, TagID09, TagID10
    FROM tblJobData ORDER BY rowid;
DROP TABLE tblJobData;
ALTER TABLE newtblJobData RENAME TO tblJobData;

CREATE TABLE newtblSchedule (
    TankID TEXT(60) COLLATE LETTERS,
    TagID TEXT(50) COLLATE LETTERS,
    TankOD TEXT(20) COLLATE LETTERS,
    OAL TEXT(20) COLLATE LETTERS,
    TankVol DOUBLE,
    App TEXT(3) COLLATE LETTERS
);
INSERT INTO newtblSchedule (TankID, TagID, TankOD, OAL, TankVol, App)
    SELECT TankID, TagID, TankOD, OAL, TankVol, App
    FROM tblSchedule ORDER BY rowid;
DROP TABLE tblSchedule;
ALTER TABLE newtblSchedule RENAME TO tblSchedule;

CREATE INDEX idxEngineer ON tblEngineer (fldName);
CREATE INDEX idxContractor ON tblContractor (fldName);
CREATE INDEX idxJobDataJob ON tblJobData (JobID, TankNo);
CREATE INDEX JobsByDate ON tblJobHeader (DateCreated);
