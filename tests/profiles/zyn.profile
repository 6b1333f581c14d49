# Sixteen parts, OSC over UDP; used by the tests only.
profile=osc,1
title=Sixteen parts
port=7777
hello=/echo,/echo
echo=all
window=4
rate=100
range*p=0,15
law*plain=f,same
law*integer=i,same
law*switch=T,same
law*text=s,same
part{p}.volume=float,-40,13.333,dB,/part{p}/Volume,plain
part{p}.panning=integer,0,127,,/part{p}/Ppanning,integer
part{p}.on=integer,0,1,,/part{p}/Penabled,switch
part{p}.name=text,,31,,/part{p}/Pname,text
master.volume=integer,0,127,,/Pvolume,integer
