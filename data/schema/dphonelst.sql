-- A list is never without a row: the shipped one holds a blank row.
INSERT INTO PhoneList (Description, PhoneNumber) VALUES ('', '');
