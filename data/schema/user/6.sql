-- What the user's own documents say of them, such as the cover of a job's package. The logo is a picture as an SVG text,
-- kept here so that neither a moved file nor another computer loses it. At most one row.
CREATE TABLE tblOwn (
    OwnName TEXT(100) COLLATE LETTERS,
    Address1 TEXT(100) COLLATE LETTERS,
    Address2 TEXT(100) COLLATE LETTERS,
    PhoneNo TEXT(50) COLLATE LETTERS,
    Logo MEMO COLLATE LETTERS
);
