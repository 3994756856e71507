-- A sample site for the simulated unit of the build tree: a school with a main board and
-- two expansion boards, as a unit in service would hold it.
UPDATE Config SET System_Config = 2;
UPDATE ClockDef SET ClockEnabled = 1, ClockA = '03', ClockB = '08', Direction = '1', BCD_Type = '0';

-- 72 stations: offices, classrooms, halls; numbers and descriptions as the unit keeps them
UPDATE Clid SET archnum = printf('%-4d', 100 + clid_station),
                clid_string = printf('%-15s', CASE
                  WHEN clid_station = 1 THEN 'Front Office'
                  WHEN clid_station = 2 THEN 'Principal'
                  WHEN clid_station = 3 THEN 'Nurse'
                  WHEN clid_station = 4 THEN 'Library'
                  WHEN clid_station = 5 THEN 'Gymnasium'
                  WHEN clid_station = 6 THEN 'Cafeteria'
                  WHEN clid_station <= 60 THEN 'Room ' || (100 + clid_station)
                  ELSE 'Hall ' || (clid_station - 60) END)
  WHERE clid_station <= 72;

-- custom page groups: all classrooms, the halls, the offices, everyone
UPDATE PageGroup SET PageGroup2 = 1, PageGroup3 = 1, PageGroup4 = 1, PageGroup5 = 1, PageGroup6 = 1,
                     PageGroup7 = 1, PageGroup8 = 1, PageGroup9 = 1, PageGroup10 = 1 WHERE DialCode = 0;
UPDATE PageGroup SET PageGroup11 = 1, PageGroup12 = 1 WHERE DialCode = 1;
UPDATE PageGroup SET PageGroup1 = 1 WHERE DialCode = 2;
UPDATE PageGroup SET PageGroup1 = 1, PageGroup2 = 1, PageGroup3 = 1, PageGroup4 = 1, PageGroup5 = 1,
                     PageGroup6 = 1, PageGroup7 = 1, PageGroup8 = 1, PageGroup9 = 1, PageGroup10 = 1,
                     PageGroup11 = 1, PageGroup12 = 1 WHERE DialCode = 3;

-- the school day on weekdays, an early-release day on Wednesdays
UPDATE SchedDays SET Monday = 1, Tuesday = 1, Thursday = 1, Friday = 1 WHERE Schedule = 1;
UPDATE SchedDays SET Wednesday = 1 WHERE Schedule = 2;
INSERT INTO Event (Schedule, StartTime, Duration, Tone, PageGroup2, PageGroup3, PageGroup4, PageGroup5, PageGroup6,
                   PageGroup7, PageGroup8, PageGroup9, PageGroup10, PageGroup11, PageGroup12)
VALUES (1, '07:55', 5, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1),
       (1, '08:00', 3, 2, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1),
       (1, '08:50', 3, 2, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1),
       (1, '09:45', 3, 2, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1),
       (1, '10:40', 3, 2, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1),
       (1, '11:30', 10, 3, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1),
       (1, '12:15', 3, 2, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1),
       (1, '13:10', 3, 2, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1),
       (1, '14:05', 3, 2, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1),
       (1, '15:00', 8, 4, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1),
       (2, '07:55', 5, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1),
       (2, '08:00', 3, 2, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1),
       (2, '09:30', 3, 2, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1),
       (2, '11:00', 3, 2, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1),
       (2, '12:30', 8, 4, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1);

-- music in the cafeteria and the halls; tones everywhere but the offices
UPDATE Bgm SET PageGroup1 = 0, PageGroup11 = 1, PageGroup12 = 1;
UPDATE TonesPG SET PageGroup1 = 0, PageGroup5 = 1, PageGroup6 = 1, PageGroup7 = 1, PageGroup8 = 1,
                   PageGroup9 = 1, PageGroup10 = 1, PageGroup11 = 1, PageGroup12 = 1;
UPDATE EmergencyPG SET PageGroup5 = 1, PageGroup6 = 1, PageGroup7 = 1, PageGroup8 = 1, PageGroup9 = 1,
                       PageGroup10 = 1, PageGroup11 = 1, PageGroup12 = 1;
UPDATE DipSwitch SET PrivacyTone = 1;
UPDATE ClassService SET Service = 2 WHERE "Group" = 1;
UPDATE ClassService SET Service = 0 WHERE "Group" > 12;
