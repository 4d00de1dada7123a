-- The schedule holds the dimensions as the catalogue's texts. It is rebuilt for every use, so nothing is lost.
DROP TABLE tblSchedule;
CREATE TABLE tblSchedule (
    TankID TEXT(60) COLLATE NOCASE,
    TagID TEXT(50) COLLATE NOCASE,
    TankOD TEXT(20) COLLATE NOCASE,
    OAL TEXT(20) COLLATE NOCASE,
    TankVol DOUBLE,
    App TEXT(3) COLLATE NOCASE
);

-- Trailing blanks do not count when texts compare. Those that were stored go, but for a key whose short form
-- another row has.
UPDATE OR IGNORE tblJobHeader SET JobID = rtrim(JobID) WHERE JobID <> rtrim(JobID);
UPDATE tblJobHeader SET JobDscrptn = rtrim(JobDscrptn), Engineer = rtrim(Engineer), Contractor = rtrim(Contractor);
UPDATE tblJobData SET JobID = rtrim(JobID)
    WHERE JobID <> rtrim(JobID) AND rtrim(JobID) IN (SELECT JobID FROM tblJobHeader)
    AND JobID NOT IN (SELECT JobID FROM tblJobHeader);
UPDATE tblEngineer SET fldName = rtrim(fldName);
UPDATE tblContractor SET fldName = rtrim(fldName);
