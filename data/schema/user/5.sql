-- The place of a tank line among its job's in documents, for jobs whose lines were moved; null keeps the order in which
-- they were entered.
ALTER TABLE tblJobData ADD COLUMN SortNo INTEGER;
