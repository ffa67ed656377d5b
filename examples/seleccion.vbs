' The smallest host: a table in memory, and the user picks one of its articles. Run it with cscript.
Option Explicit

Class Articulos ' the data class
    Public Recordset
    Public Property Get sClassName : sClassName = "articulos" : End Property
    Public Property Get existenregistros : existenregistros = Recordset.RecordCount > 0 : End Property
    Public Sub Requery(consulta) : Recordset.MoveFirst : End Sub
    Public Sub FindRecord(texto, columna) : Recordset.MoveFirst : End Sub
    Public Sub MoveNext : Recordset.MoveNext : End Sub
    Public Sub MovePrevious : Recordset.MovePrevious : End Sub
    Public Function GetFilter(nombre) : GetFilter = Recordset.Filter : End Function
    Public Function CreateFilter(caja) : CreateFilter = "Nombre LIKE '" & caja.Text & "*'" : End Function
    Public Sub SetFilter(filtro, nombre) : End Sub
    Public Sub AplyFilter(filtro) : Recordset.Filter = filtro : End Sub
    Public Sub SetOrder(columna, sentido, consulta) : Recordset.Sort = Recordset.Fields(columna).Name & sentido : End Sub
End Class

Class Pantalla ' the screen: its control, and the sink that gets the answer
    Public Text
    Public Sub AceptarSeleccion(indice, ctl, valor) : ctl.Text = valor : End Sub
End Class

Dim datos, campo, filas, i
Set datos = New Articulos
Set campo = New Pantalla
Set datos.Recordset = CreateObject("ADODB.Recordset")
datos.Recordset.CursorLocation = 3
datos.Recordset.Fields.Append "Codigo", 202, 10
datos.Recordset.Fields.Append "Nombre", 202, 40
datos.Recordset.Open
filas = Array("A-1", "Tornillo", "A-2", "Tuerca", "A-3", "Arandela")
For i = 1 To 3 : datos.Recordset.AddNew : Next
datos.Recordset.MoveFirst
For i = 0 To 2
    datos.Recordset.Fields("Codigo").Value = filas(2 * i)
    datos.Recordset.Fields("Nombre").Value = filas(2 * i + 1)
    datos.Recordset.MoveNext
Next

CreateObject("Tamvelo.ClsShowSerch").ShowSelec campo, datos, campo
WScript.Echo "Elegido: " & campo.Text
