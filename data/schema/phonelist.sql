-- The operator's phone list of far-end modems.
CREATE TABLE PhoneList (
  Description TEXT(50),
  PhoneNumber TEXT(50)
);
