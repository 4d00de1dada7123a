-- The start page shows the newest jobs; the index spares it the sorting of all.
CREATE INDEX JobsByDate ON tblJobHeader (DateCreated);
