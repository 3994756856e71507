-- Modems and their initialisation commands.
CREATE TABLE ModemList (
  Modem TEXT(50),
  Command TEXT(255)
);
