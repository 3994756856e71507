-- What a new document holds.
INSERT INTO Config (System_Config) VALUES (0);
INSERT INTO ClockDef (ClockEnabled, ClockA, ClockB, Direction, BCD_Type) VALUES (0, '1', '1', '0', '0');

-- 96 stations, no numbers or descriptions yet
WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 96)
INSERT INTO Clid (clid_station, archnum, clid_string) SELECT i, '', '' FROM n;

-- the four custom page groups on dial codes 50 to 53, holding no groups
INSERT INTO PageGroup (DialCode) VALUES (0), (1), (2), (3);

-- six schedules that run on no day
INSERT INTO SchedDays (Schedule) VALUES (1), (2), (3), (4), (5), (6);

INSERT INTO Bgm DEFAULT VALUES;

-- time tones and emergency tones sound in the main board's groups 1 to 4
INSERT INTO TonesPG (PageGroup1, PageGroup2, PageGroup3, PageGroup4) VALUES (1, 1, 1, 1);
INSERT INTO EmergencyPG (PageGroup1, PageGroup2, PageGroup3, PageGroup4) VALUES (1, 1, 1, 1);

INSERT INTO DipSwitch DEFAULT VALUES;

-- sixteen service groups of six stations, all Normal / Emergency
WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 16)
INSERT INTO ClassService ("Group", Service) SELECT i, 1 FROM n;

INSERT INTO Rev (rev) VALUES ('02.00');
