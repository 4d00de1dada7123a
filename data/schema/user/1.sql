-- The user's own data: jobs, tank lines, defaults and name lists.
-- A declared size such as TEXT(50) is the longest text that a screen lets the user type.
CREATE TABLE tblFirstTime (FirstTime INTEGER NOT NULL DEFAULT 0, "Convert" INTEGER NOT NULL DEFAULT 0);
INSERT INTO tblFirstTime VALUES (0, 0);

CREATE TABLE tblUser (
    PostalCode TEXT(10) COLLATE NOCASE,
    FirstPostalCode TEXT(10) COLLATE NOCASE,
    DefaultEngineer TEXT(50) COLLATE NOCASE,
    DefaultContractor TEXT(50) COLLATE NOCASE,
    DefaultPSIa DOUBLE
);

CREATE TABLE tblRepMaster (
    UserPostalCode TEXT(10) COLLATE NOCASE,
    CompanyName TEXT(100) COLLATE NOCASE,
    Address1 TEXT(100) COLLATE NOCASE,
    Address2 TEXT(150) COLLATE NOCASE,
    PhoneNo TEXT(30) COLLATE NOCASE,
    FAXNo TEXT(30) COLLATE NOCASE,
    "Default" BOOLEAN NOT NULL DEFAULT 0
);

CREATE TABLE tblEngineer (fldName TEXT(50) COLLATE NOCASE);
CREATE INDEX idxEngineer ON tblEngineer (fldName);
CREATE TABLE tblContractor (fldName TEXT(50) COLLATE NOCASE);
CREATE INDEX idxContractor ON tblContractor (fldName);

CREATE TABLE tblJobHeader (
    JobID TEXT(50) COLLATE NOCASE NOT NULL PRIMARY KEY,
    JobDscrptn TEXT(100) COLLATE NOCASE,
    Engineer TEXT(50) COLLATE NOCASE,
    Contractor TEXT(50) COLLATE NOCASE,
    JobInfo MEMO COLLATE NOCASE,
    DateCreated DATETIME
);

-- A tank ID is the job ID, a point and the tank number, hence the larger size.
CREATE TABLE tblJobData (
    TankID TEXT(60) COLLATE NOCASE NOT NULL PRIMARY KEY,
    TankNo INTEGER,
    JobID TEXT(50) COLLATE NOCASE,
    DateCreated DATETIME,
    TankClass TEXT(10) COLLATE NOCASE,
    ModelNo TEXT(50) COLLATE NOCASE,
    Qty INTEGER,
    AtmPressure DOUBLE,
    SOPMin DOUBLE,
    SOPMax DOUBLE,
    SOTMin DOUBLE,
    SOTMax DOUBLE,
    SysFluidType TEXT(50) COLLATE NOCASE,
    TotSysVolume DOUBLE,
    RequiredVolume DOUBLE,
    RequiredAcceptance DOUBLE,
    PipeLength DOUBLE,
    PipeIndex TEXT(50) COLLATE NOCASE,
    FlowRate DOUBLE,
    FlowPressure DOUBLE,
    StaticPressure DOUBLE,
    ShockPressure DOUBLE,
    WaterVelocity DOUBLE,
    KineticEnergy DOUBLE,
    TotalKineticEnergy DOUBLE,
    LeakLoad DOUBLE,
    PumpRunTime DOUBLE,
    TagID01 TEXT(50) COLLATE NOCASE,
    TagID02 TEXT(50) COLLATE NOCASE,
    TagID03 TEXT(50) COLLATE NOCASE,
    TagID04 TEXT(50) COLLATE NOCASE,
    TagID05 TEXT(50) COLLATE NOCASE,
    TagID06 TEXT(50) COLLATE NOCASE,
    TagID07 TEXT(50) COLLATE NOCASE,
    TagID08 TEXT(50) COLLATE NOCASE,
    TagID09 TEXT(50) COLLATE NOCASE,
    TagID10 TEXT(50) COLLATE NOCASE
);
CREATE INDEX idxJobDataJob ON tblJobData (JobID, TankNo);

CREATE TABLE tblSchedule (
    TankID TEXT(60) COLLATE NOCASE,
    TagID TEXT(50) COLLATE NOCASE,
    TankOD DOUBLE,
    OAL DOUBLE,
    TankVol DOUBLE,
    App TEXT(3) COLLATE NOCASE
);
