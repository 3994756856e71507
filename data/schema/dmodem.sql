-- Every command sets the modem to answer on the first ring (S0=1) at a fixed 9600
-- baud, with error control and compression off, no result codes (Q1), no echo and
-- DTR ignored (&D0), for the unit's plain 9600,n,8,1 line.
INSERT INTO ModemList (Modem, Command) VALUES
  ('Generic V.250 Modem', 'AT&FE0Q1&D0S0=1+ES=1,0,1+DS=0+MS=V32,0,9600,9600'),
  ('Generic Modem, \N and %C commands', 'AT&FE0Q1&D0S0=1\N0%C0+MS=V32,0,9600,9600'),
  ('Generic Modem, &M and &N commands', 'AT&FE0Q1&D0S0=1&M0&K0&N6'),
  ('Generic Modem, F rate commands', 'AT&FE0Q1&D0S0=1\N0%C0F8');
