-- The clock types on offer. A clock definition stores the 1-based position of its
-- type in this order, so new types go at the end.
INSERT INTO Clocks (Cindex, CCorrected) VALUES
  ('Minute Impulse 24V DC', 'No'),
  ('Polarised Minute Impulse', 'No'),
  ('Synchronous Wired 59 Minute', 'Yes'),
  ('Synchronous Wired 58 Minute', 'Yes'),
  ('Dual Motor Correction', 'Yes'),
  ('Second Impulse', 'No'),
  ('Reverse Polarity Minute', 'No'),
  ('Serial Time Code', 'Yes'),
  ('Digital Display Series', 'Yes'),
  ('Free Running 12 Hour', 'No');
